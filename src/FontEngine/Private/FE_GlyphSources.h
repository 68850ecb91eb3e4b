#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Private/FE_GlyphCaches.h>
#include <FontEngine/Renderer/FE_PlacedGlyphRun.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <ft2build.h>
#include FT_IMAGE_H

#include <boost/container/static_vector.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Whether a screen is so dense that glyphs have fractional positions. Otherwise glyphs have whole positions,
/// and their bitmaps are rendered with the fraction of the pen position. NaN is not dense.
constexpr bool isDense(float devicePixelRatio) {
    return devicePixelRatio >= 1.5F;
}

/// A glyph of a text before it has its bitmap: the fields that distinguish it from other glyphs of its
/// source.
struct PendingGlyph {
    unsigned short glyphIndex;
    unsigned char offsetInsidePixel;
    bool isLast;
    unsigned int unicode;
    float x; ///< the pen position in logical units
    float y; ///< points down

    FT_Render_Mode getRenderMode() const {
        return unicode == '_' ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL;
    }
    std::uint32_t getSlot() const {
        return getBitmapSlot(glyphIndex, getRenderMode(), offsetInsidePixel, isLast);
    }
};

/// The maximum number of glyphs that are fetched under one lock: enough to make the cost of the lock
/// negligible, and few enough not to keep other threads waiting.
constexpr std::size_t maxBatchSize = 64;
using PendingGlyphs = boost::container::static_vector<PendingGlyph, maxBatchSize>;

/// A face that supplies bitmaps of a run, and what their keys have in common. The creator keeps the face and
/// the description alive.
struct BitmapSource {
    BitmapGlyphInfo makeKey(const PendingGlyph& glyph) const {
        const StrikeInfo& info = strike.getInfo();
        return BitmapGlyphInfo(faceInfo, glyph.getRenderMode(), glyph.glyphIndex, glyph.unicode,
                               info.fontSize, info.scale, info.devicePixelRatio, glyph.offsetInsidePixel,
                               glyph.isLast, info.transform);
    }

    BitmapCache::Handle strike;
    const NNPtr<const Gfx::FontFaceInfo>& faceInfo;
    const FontFace& face;
    bool flipVertically;
};

inline void BoxUnion::add(const GlyphBox& glyph) {
    const FT_Pos left = glyph.left;
    const FT_Pos top = glyph.top;
    _box.xMin = std::min(_box.xMin, left);
    _box.yMin = std::min(_box.yMin, top - static_cast<FT_Pos>(glyph.rows));
    _box.xMax = std::max(_box.xMax, left + static_cast<FT_Pos>(glyph.width));
    _box.yMax = std::max(_box.yMax, top);
}

/// The face that supplies the outlines of a run. The creator keeps the face and the description alive.
struct OutlineSource {
    GlyphInfo makeKey(unsigned short glyphIndex) const {
        const StrikeInfo& info = strike.getInfo();
        return GlyphInfo(faceInfo, glyphIndex, info.fontSize, info.transform);
    }

    OutlineCache::Handle strike;
    const NNPtr<const Gfx::FontFaceInfo>& faceInfo;
    const NNPtr<const FontFace>& face;
};

/// A glyph of a text before it has its outline.
struct PendingOutline {
    unsigned short glyphIndex;
    float advance; ///< in font units
};

using PendingOutlines = boost::container::static_vector<PendingOutline, maxBatchSize>;

} // namespace Vell::FontEngine::Internal
