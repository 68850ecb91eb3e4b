#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Vell::FontLoaders::Internal {

/// Big-endian numbers in bytes that others own. A number that is not wholly within them is nothing, wherever
/// it is looked for. Positions have 64 bits, so that sums of 32-bit numbers from a file do not wrap.
class BigEndianBytes {
public:
    BigEndianBytes() = default;
    BigEndianBytes(const unsigned char* data, std::size_t size)
        : _data(data)
        , _size(size) {}

    std::size_t size() const { return _size; }

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

    /// Nothing unless all of it is there.
    std::optional<BigEndianBytes> slice(std::uint64_t at, std::uint64_t count) const {
        if (!holds(at, count)) {
            return std::nullopt;
        }
        return BigEndianBytes(_data + at, static_cast<std::size_t>(count));
    }

    /// From a position to the end; empty behind the end.
    BigEndianBytes sliceFrom(std::uint64_t at) const {
        return at <= _size ? BigEndianBytes(_data + at, _size - static_cast<std::size_t>(at))
                           : BigEndianBytes();
    }

private:
    bool holds(std::uint64_t at, std::uint64_t count) const { return at <= _size && _size - at >= count; }

    const unsigned char* _data = nullptr;
    std::size_t _size = 0;
};

} // namespace Vell::FontLoaders::Internal
