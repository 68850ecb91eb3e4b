#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Vell::FontLoaders::Internal {

/// Reads big-endian numbers from bytes that somebody else owns. Any position is safe to read: a number that
/// is not completely within the bytes is empty. Positions have 64 bits, so that sums of 32-bit numbers from a
/// file do not overflow.
class BigEndianBytes {
public:
    BigEndianBytes() = default;
    BigEndianBytes(const unsigned char* data, std::size_t size)
        : _data(data)
        , _size(size) {}

    std::size_t size() const { return _size; }

    std::optional<unsigned int> u8(std::uint64_t at) const {
        return holds(at, 1) ? std::optional<unsigned int>(_data[at]) : std::nullopt;
    }

    std::optional<unsigned int> u16(std::uint64_t at) const {
        if (!holds(at, 2)) {
            return std::nullopt;
        }
        return static_cast<unsigned int>(_data[at]) << 8U | _data[at + 1];
    }

    std::optional<std::uint32_t> u32(std::uint64_t at) const {
        const std::optional<unsigned int> high = u16(at);
        const std::optional<unsigned int> low = u16(at + 2);
        if (!high || !low) {
            return std::nullopt;
        }
        return std::uint32_t{*high} << 16U | *low;
    }

    /// Empty unless all `count` bytes exist.
    std::optional<BigEndianBytes> slice(std::uint64_t at, std::uint64_t count) const {
        if (!holds(at, count)) {
            return std::nullopt;
        }
        return BigEndianBytes(_data + at, static_cast<std::size_t>(count));
    }

    /// The bytes from a position to the end. No bytes if the position is past the end.
    BigEndianBytes sliceFrom(std::uint64_t at) const {
        return at <= _size ? BigEndianBytes(_data + at, _size - static_cast<std::size_t>(at))
                           : BigEndianBytes();
    }

private:
    bool holds(std::uint64_t at, std::uint64_t count) const { return at <= _size && _size - at >= count; }

    const unsigned char* _data = nullptr;
    std::size_t _size = 0;
};

/// The position of a table in a file.
struct TableRange {
    std::uint32_t offset = 0;
    std::uint32_t length = 0; ///< 0 for a table that FreeType does not find
};

/// Finds the table that FreeType would use for the first face of an SFNT file or collection: the first entry
/// with this tag whose range lies within the file.
TableRange findTable(const BigEndianBytes& file, std::uint32_t tag);

} // namespace Vell::FontLoaders::Internal
