#pragma once

#include <FontLoaders/Private/BigEndianBytes.h>

#include <cstdint>
#include <optional>

namespace Vell::FontLoaders::Internal {

/// The bytes of a component's record, by its flags: indices, offsets, scale factors.
inline std::uint64_t getRecordSize(unsigned int flags) {
    constexpr unsigned int offsetsAreWords = 0x0001;
    constexpr unsigned int hasScale = 0x0008;
    constexpr unsigned int hasTwoScales = 0x0040;
    constexpr unsigned int hasMatrix = 0x0080;
    const std::uint64_t offsets = (flags & offsetsAreWords) != 0 ? 4 : 2;
    const std::uint64_t factors = (flags & hasScale) != 0       ? 2
                                  : (flags & hasTwoScales) != 0 ? 4
                                  : (flags & hasMatrix) != 0    ? 8
                                                                : 0;
    return 4 + offsets + factors;
}

constexpr std::uint64_t glyphHeaderSize = 10; // of a glyph: the number of contours and the box

/// The components of one glyph, one after the other; none for a glyph with contours of its own.
class Components {
public:
    explicit Components(BigEndianBytes glyph)
        : _glyph(glyph) {
        constexpr unsigned int negative = 0x8000; // number of contours
        _hasMore = (_glyph.u16(0).value_or(0) & negative) != 0;
    }

    std::optional<unsigned int> takeNext() {
        constexpr unsigned int moreFollow = 0x0020;
        constexpr unsigned int programFollows = 0x0100; // FreeType asks the last component
        const std::optional<unsigned int> flags = _glyph.u16(_record);
        const std::optional<unsigned int> component = _glyph.u16(_record + 2);
        if (!_hasMore || !flags || !component) {
            return std::nullopt;
        }
        _hasMore = (*flags & moreFollow) != 0;
        _hasProgram = (*flags & programFollows) != 0;
        _record += getRecordSize(*flags);
        return component;
    }

    bool isEmpty() const { return !_hasMore; }

    /// In bytes, once all components are taken. FreeType reads the length even behind the end of the glyph.
    std::uint64_t getProgramSize() const {
        constexpr unsigned int longest = 0xFFFF;
        return _hasProgram && !_hasMore ? _glyph.u16(_record).value_or(longest) : 0;
    }

private:
    BigEndianBytes _glyph;
    std::uint64_t _record = glyphHeaderSize;
    bool _hasMore;
    bool _hasProgram = false;
};

/// What the header of a glyph with contours of its own says.
struct Contours {
    std::uint64_t pointCount = 0;
    std::uint64_t programSize = 0; ///< in bytes; 0 for a program that the glyph has no room for
};

inline Contours readContours(BigEndianBytes glyph) {
    const unsigned int count = glyph.u16(0).value_or(0);
    const std::uint64_t lengthPlace = glyphHeaderSize + std::uint64_t{2} * count;
    const std::optional<unsigned int> lastPoint = glyph.u16(lengthPlace - 2);
    const std::optional<unsigned int> length = glyph.u16(lengthPlace);
    if (count == 0 || !lastPoint || !length) {
        return {};
    }
    const bool isWhole = *length <= glyph.size() - lengthPlace - 2;
    return {std::uint64_t{*lastPoint} + 1, isWhole ? *length : 0U};
}

} // namespace Vell::FontLoaders::Internal
