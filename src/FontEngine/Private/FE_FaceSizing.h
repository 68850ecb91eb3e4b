#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/FreeTypeMemory.h>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontEngine::Internal {

/// The size that a FreeType face has, if that is known. Then the face need not be sized again, which would
/// rerun the font's control value program and take ten times as long as a hinted glyph.
///
/// The size is unknown if the face is not scalable or is variable, after a failure, and after a client has
/// sized the face. Only a thread that may use the face may use this object.
struct KnownSize {
    bool isTrusted = false; ///< FreeType has loaded a glyph at this size, and nothing has failed since
    FT_F26Dot6 height = 0;
    FT_UInt resolution = 0;
    FT_Size size = nullptr;
    FT_Size_Metrics metrics{};
};

/// Sizes a face for one glyph, and bounds FreeType's memory while the glyph is made:
///
///     FaceSizing sizing(face, info);
///     if (!sizing) return nullptr;
///     ...; // FreeType loads and renders; may throw
///     sizing.confirm();
///
/// Converts to false if FreeType refuses the size, or if the size, the scale or the ratio is NaN, infinite or
/// out of FreeType's range. FreeType decides about zero and negative sizes.
class FaceSizing {
public:
    FaceSizing(const FontFace& face, const BitmapGlyphInfo& info);
    /// For an outline.
    FaceSizing(const FontFace& face, const GlyphInfo& info);
    FaceSizing(const FaceSizing&) = delete;
    FaceSizing& operator=(const FaceSizing&) = delete;

    explicit operator bool() const { return _isSized; }

    /// Call this after all calls of FreeType have succeeded. The next glyph of this size then need not size
    /// the face.
    void confirm();

private:
    bool trySize(float height, double resolution);
    bool isKnown(FT_F26Dot6 height, FT_UInt resolution) const;

    FontLoaders::FreeTypeOperation _operation;
    FT_Face _face;
    KnownSize& _known;
    bool _isSized;
};

} // namespace Vell::FontEngine::Internal
