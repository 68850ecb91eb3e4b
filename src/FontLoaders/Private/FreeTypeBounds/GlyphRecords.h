#pragma once

#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>

#include <cstdint>
#include <optional>

namespace Vell::FontLoaders::Internal {

/// The size in bytes of a component's record, which depends on its flags: indices, offsets, scale factors.
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

constexpr std::uint64_t glyphHeaderSize = 10; // the number of contours and the bounding box

/// The components of one glyph, in order. A glyph with contours of its own has none.
class Components {
public:
    explicit Components(BigEndianBytes glyph)
        : _glyph(glyph) {
        constexpr unsigned int negative = 0x8000; // the sign of the number of contours
        _hasMore = (_glyph.u16(0).value_or(0) & negative) != 0;
    }

    std::optional<unsigned int> takeNext() {
        constexpr unsigned int moreFollow = 0x0020;
        constexpr unsigned int programFollows = 0x0100; // FreeType uses the flag of the last component
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

    /// In bytes, once all components have been taken. FreeType reads the length even past the end of the
    /// glyph.
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

/// The sizes of a glyph that has contours of its own.
struct Contours {
    std::uint64_t pointCount = 0;
    std::uint64_t programSize = 0; ///< in bytes; 0 for a program that extends past the end of the glyph
};

inline Contours readContours(BigEndianBytes glyph) {
    const unsigned int count = glyph.u16(0).value_or(0);
    const std::uint64_t lengthOffset = glyphHeaderSize + std::uint64_t{2} * count;
    const std::optional<unsigned int> lastPoint = glyph.u16(lengthOffset - 2);
    const std::optional<unsigned int> length = glyph.u16(lengthOffset);
    if (count == 0 || !lastPoint || !length) {
        return {};
    }
    const bool isComplete = *length <= glyph.size() - lengthOffset - 2;
    return {std::uint64_t{*lastPoint} + 1, isComplete ? *length : 0U};
}

} // namespace Vell::FontLoaders::Internal
