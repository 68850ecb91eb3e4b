#pragma once

#include <Gfx/Public/CharMap.h>
#include <Utils/Public/Export.h>

#include <utility>

namespace Vell::FontEngine {
class FontFace;
class FontFactory;
} // namespace Vell::FontEngine

namespace Vell::Gfx {

/// Restricts a constructor to the font factory and its faces. The constructor takes this tag and is public,
/// so that std::make_shared can call it, but nobody else can make the tag.
class FactoryAccessTag {
    friend class Vell::FontEngine::FontFace;
    friend class Vell::FontEngine::FontFactory;

    // User-provided, or anybody could write `FactoryAccessTag{}`, which would be aggregate initialisation.
    explicit FactoryAccessTag() {} // NOLINT(modernize-use-equals-default)
};

/// The line metrics of a face and its character map. All lengths are in ems. Immutable.
class VELL_API BasicMetrics {
public:
    BasicMetrics(FactoryAccessTag, float height, float ascender, float descender,
                 std::pair<float, float> capHeightAndStrikeOut, CharMap charMap);

    /// The distance between two base lines.
    float getHeight() const { return _height; }
    /// From the base line up to the top of the line.
    float getAscender() const { return _ascender; }
    /// From the base line down to the bottom of the line, as a positive number.
    float getDescender() const { return _descender; }
    float getCapHeight() const { return _capHeight; }
    /// From the base line up to the lower edge of the strike-out stroke.
    float getStrikeOutPosition() const { return _strikeOutPosition; }
    const CharMap& getCharMap() const { return _charMap; }

private:
    float _height;
    float _ascender;
    float _descender;
    float _capHeight;
    float _strikeOutPosition;
    CharMap _charMap;
};

} // namespace Vell::Gfx
