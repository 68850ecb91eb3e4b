#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontEngine/Private/FE_StrikeCache.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontLoaders/Public/FreeType.h>
#include <Gfx/Public/Painter.h>

#include FT_GLYPH_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace Vell::FontEngine::Internal {

/// Releases a glyph together with the share of its library that shareFreeTypeLibrary took for it.
struct GlyphReleaser {
    void operator()(FT_GlyphRec_* glyph) const;
};

using GlyphOwner = std::unique_ptr<FT_GlyphRec_, GlyphReleaser>;

/// Renders a bitmap glyph as createBitmapGlyph does. The face must already have its size.
GlyphOwner renderBitmapGlyph(const BitmapGlyphInfo& info, const FontLoaders::FTFacePtr& face,
                             bool flipVertically);

/// The position and extent of a bitmap glyph in device pixels, as FreeType reports them.
struct GlyphBox {
    std::int32_t left = 0;
    std::int32_t top = 0; ///< y points up
    std::uint32_t width = 0;
    std::uint32_t rows = 0;
};

/// A rendered glyph, shared by the bitmap cache and runs. Only its references change. The box repeats what
/// the FreeType glyph has, so that the layout need not follow the pointer to it.
struct RenderedGlyph : GlyphBox, KeyedBitmap {
    /// `owner` is null if FreeType cannot size the face.
    RenderedGlyph(const BitmapGlyphInfo& key, GlyphOwner owner)
        : KeyedBitmap(key)
        , glyph(std::move(owner)) {
        if (const FT_BitmapGlyphRec_* const bitmapGlyph = getBitmapGlyph()) {
            left = bitmapGlyph->left;
            top = bitmapGlyph->top;
            width = bitmapGlyph->bitmap.width;
            rows = bitmapGlyph->bitmap.rows;
        }
    }

    const FT_BitmapGlyphRec_* getBitmapGlyph() const {
        return reinterpret_cast<const FT_BitmapGlyphRec_*>(glyph.get());
    }

    const GlyphOwner glyph;
};

/// The reference of the bitmap cache to a glyph.
class CachedBitmap {
public:
    explicit CachedBitmap(const std::shared_ptr<RenderedGlyph>& rendered)
        : _rendered(rendered.get()) {
        _rendered->data = std::shared_ptr<const FT_BitmapGlyphRec_>(rendered, rendered->getBitmapGlyph());
    }
    CachedBitmap(CachedBitmap&& other) noexcept
        : _rendered(std::exchange(other._rendered, nullptr)) {}
    CachedBitmap(const CachedBitmap&) = delete;
    CachedBitmap& operator=(const CachedBitmap&) = delete;
    ~CachedBitmap() {
        if (_rendered != nullptr) {
            _rendered->dropReference();
        }
    }

    RenderedGlyph& operator*() const { return *_rendered; }
    RenderedGlyph* operator->() const { return _rendered; }

private:
    RenderedGlyph* _rendered;
};

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

inline Vell::FontEngine::BitmapGlyph::BitmapGlyph(Internal::RenderedGlyph& rendered, float x, float y)
    : _keyed(&rendered)
    , _pos(x, y) {}
