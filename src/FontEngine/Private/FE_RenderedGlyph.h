#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <FontLoaders/Public/FreeType.h>

#include FT_GLYPH_H

#include <cstdint>
#include <memory>
#include <utility>

namespace Vell::FontEngine::Internal {

/// Releases a glyph together with the share of its library that shareFreeTypeLibrary took for it.
struct GlyphReleaser {
    void operator()(FT_GlyphRec_* glyph) const;
};

using GlyphOwner = std::unique_ptr<FT_GlyphRec_, GlyphReleaser>;

/// A bitmap glyph of a face that has been sized already, as createBitmapGlyph makes it.
GlyphOwner renderBitmapGlyph(const BitmapGlyphInfo& info, const FontLoaders::FTFacePtr& face,
                             bool flipVertically);

/// Where a bitmap glyph lies, in device pixels, as FreeType tells it.
struct GlyphBox {
    std::int32_t left = 0;
    std::int32_t top = 0; ///< y points up
    std::uint32_t width = 0;
    std::uint32_t rows = 0;
};

/// A rendered glyph with the key that it was rendered for: what the bitmap cache and runs share. Immutable.
/// The box stands beside the reference count, which a run changes anyway.
struct RenderedGlyph : GlyphBox, BitmapGlyphInfo {
    /// `owner` is null where FreeType cannot size the face.
    RenderedGlyph(const BitmapGlyphInfo& key, GlyphOwner owner)
        : BitmapGlyphInfo(key)
        , glyph(std::move(owner)) {
        if (glyph != nullptr) {
            const FT_BitmapGlyphRec_& bitmapGlyph = *getBitmapGlyph();
            left = bitmapGlyph.left;
            top = bitmapGlyph.top;
            width = bitmapGlyph.bitmap.width;
            rows = bitmapGlyph.bitmap.rows;
        }
    }

    const FT_BitmapGlyphRec_* getBitmapGlyph() const {
        return reinterpret_cast<const FT_BitmapGlyphRec_*>(glyph.get());
    }

    const GlyphOwner glyph;
};

} // namespace Vell::FontEngine::Internal

inline Vell::FontEngine::BitmapGlyph::BitmapGlyph(const std::shared_ptr<const FT_BitmapGlyphRec_>& data,
                                                  cinder::Vec2<float> pos,
                                                  const Internal::RenderedGlyph& rendered)
    : _data(data)
    , _info(&rendered)
    , _pos(pos) {}
