#pragma once

#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/FreeTypeMemory.h>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontEngine::Internal {

/// The size that a FreeType face is known to have, so that it is not asked for again: FreeType would rerun
/// the font's own preparation program, which takes ten times as long as a hinted glyph.
///
/// Nothing is known of a face that is not scalable or varies, after a failure, and once somebody else has
/// given the face another size. Belongs to whoever may use the face.
struct KnownSize {
    bool isTrusted = false; ///< FreeType has loaded a glyph at this size, and nothing has failed since
    FT_F26Dot6 height = 0;
    FT_UInt resolution = 0;
    FT_Size size = nullptr;
    FT_Size_Metrics metrics{};
};

/// A face sized for one glyph, within the bounds of FreeType's memory, while the glyph is made:
///
///     FaceSizing sizing(face, info);
///     if (!sizing) return nullptr;
///     ...; // FreeType loads and renders; may throw
///     sizing.confirm();
///
/// Converts to false when FreeType refuses, and when the size, the scale or the ratio is no number that
/// FreeType could be given (not a number, infinite, out of range); zero and negative sizes are left to
/// FreeType.
class FaceSizing {
public:
    FaceSizing(const FontFace& face, const BitmapGlyphInfo& info);
    /// For an outline.
    FaceSizing(const FontFace& face, const GlyphInfo& info);
    FaceSizing(const FaceSizing&) = delete;
    FaceSizing& operator=(const FaceSizing&) = delete;

    explicit operator bool() const { return _isSized; }

    /// All calls of FreeType have succeeded: the next glyph of this size may rely on it.
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
