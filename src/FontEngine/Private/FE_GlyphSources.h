#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Private/FE_GlyphCaches.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <ft2build.h>
#include FT_IMAGE_H

#include <boost/container/static_vector.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Whether glyphs stand at fractional positions. Below this ratio they stand on whole units, and the fraction
/// of the pen is rendered into their bitmaps; dense screens need no such bitmaps. NaN is not dense.
constexpr bool isDense(float devicePixelRatio) {
    return devicePixelRatio >= 1.5F;
}

/// A glyph of a text before it has its bitmap: what tells it from the others of its source.
struct LaidGlyph {
    unsigned short glyphIndex;
    unsigned char offsetInsidePixel;
    bool isLast;
    unsigned int unicode;
    float x; ///< of the pen, in logical units

    FT_Render_Mode getRenderMode() const {
        return unicode == '_' ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL;
    }
    std::uint32_t getSlot() const {
        return getBitmapSlot(glyphIndex, getRenderMode(), offsetInsidePixel, isLast);
    }
};

/// Glyphs that are fetched under one lock: so many that it does not count beside them, and so few that
/// another thread does not wait long.
constexpr std::size_t stretch = 64;
using LaidGlyphs = boost::container::static_vector<LaidGlyph, stretch>;

/// A face that bitmaps of a run come from, with what they have in common. Whoever makes it keeps face and
/// description.
struct BitmapSource {
    BitmapGlyphInfo makeKey(const LaidGlyph& glyph) const {
        const StrikeInfo& info = road.getInfo();
        return BitmapGlyphInfo(faceInfo, glyph.getRenderMode(), glyph.glyphIndex, glyph.unicode,
                               info.fontSize, info.scale, info.devicePixelRatio, glyph.offsetInsidePixel,
                               glyph.isLast, info.transform);
    }

    BitmapCache::Road road;
    const NNPtr<const Gfx::FontFaceInfo>& faceInfo;
    const FontFace& face;
    bool flipVertically;
};

/// The union of glyph boxes. Coordinates beyond 32,000 pixels are not expected: they would not widen it
/// rightly.
class BoxUnion {
public:
    /// The control box that FreeType gives in whole pixels.
    void add(const GlyphBox& glyph) {
        const FT_Pos left = glyph.left;
        const FT_Pos top = glyph.top;
        _box.xMin = std::min(_box.xMin, left);
        _box.yMin = std::min(_box.yMin, top - static_cast<FT_Pos>(glyph.rows));
        _box.xMax = std::max(_box.xMax, left + static_cast<FT_Pos>(glyph.width));
        _box.yMax = std::max(_box.yMax, top);
    }

    FT_BBox get() const { return _box.xMin > _box.xMax ? FT_BBox{0, 0, 0, 0} : _box; }

private:
    FT_BBox _box{32000, 32000, -32000, -32000};
};

/// The face that the outlines of a run come from. Whoever makes it keeps face and description.
struct OutlineSource {
    GlyphInfo makeKey(unsigned short glyphIndex) const {
        const StrikeInfo& info = road.getInfo();
        return GlyphInfo(faceInfo, glyphIndex, info.fontSize, info.transform);
    }

    OutlineCache::Road road;
    const NNPtr<const Gfx::FontFaceInfo>& faceInfo;
    const NNPtr<const FontFace>& face;
};

/// A glyph of a text before it has its outline.
struct LaidOutline {
    unsigned short glyphIndex;
    float advance; ///< in font units
};

using LaidOutlines = boost::container::static_vector<LaidOutline, stretch>;

} // namespace Vell::FontEngine::Internal
