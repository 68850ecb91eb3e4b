#pragma once

#include <FontEngine/FE_BitmapGlyphImage.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontEngine/Private/FE_RenderedGlyph.h>
#include <FontEngine/Private/FE_StrikeCache.h>
#include <Gfx/Public/Painter.h>

#include <cstddef>
#include <memory>

namespace Vell::FontEngine::Internal {

/// Refers to a key that is stored elsewhere. A key in the cache refers to the rendered glyph of its entry.
struct BitmapKeyRef {
    const BitmapGlyphInfo* info;

    bool operator==(const BitmapKeyRef& other) const { return *info == *other.info; }
    const NNPtr<const Gfx::FontFaceInfo>& getFaceInfo() const { return info->getFaceInfo(); }
};

struct BitmapKeyRefHash {
    std::size_t operator()(const BitmapKeyRef& key) const { return key.info->hash(); }
};

using BitmapPtr = std::shared_ptr<const FT_BitmapGlyphRec_>;
using ImagePtr = std::shared_ptr<const BitmapGlyphImageWithDeleter>;
using PathPtr = std::shared_ptr<const Gfx::Path>;

using BitmapCache = StrikeCache<BitmapKeyRef, CachedBitmap, BitmapKeyRefHash>;
using ImageCache = StrikeCache<ColoredBitmapGlyphInfo, ImagePtr, ColoredBitmapGlyphInfoHash>;
using OutlineCache = StrikeCache<GlyphInfo, PathPtr, GlyphInfoHash>;

} // namespace Vell::FontEngine::Internal
