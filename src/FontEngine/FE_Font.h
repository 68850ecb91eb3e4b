#pragma once

#include <FontEngine/FE_FontFace.h>
#include <Gfx/Public/BasicMetrics.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/UniversalFontMetrics.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::FontEngine {

class FontFactory;

/// A face at a size: it implements the text metrics, and the text painters draw with it. FontFactory::getFont
/// makes a new font for each request. A font shares its face, so it is cheap to make and to move, and it
/// stays valid when the factory drops the face from its cache.
///
/// Threads: any number of threads may use one font at once. Only assignment changes a font.
class VELL_API Font : public Gfx::UniversalFontMetrics {
public:
    Font(Gfx::FactoryAccessTag, const NNPtr<const Gfx::FontInfo>& fontInfo,
         const NNPtr<const FontFace>& fontFace);
    Font(const Font&) = default;
    Font(Font&&) noexcept = default;
    Font& operator=(const Font&) = default;
    Font& operator=(Font&&) noexcept = default;
    ~Font() override;

    const NNPtr<const FontFace>& getFace() const { return _fontFace; }
    NNPtr<const Gfx::FontInfo> getFontInfo() const { return _fontInfo; }
    /// Asserts that the factory still exists.
    const FontFactory& getFontFactory() const { return _fontFace->getFontFactory(); }

    /// Replaces `glyph` with the fallback font's entry for the character, which must then be drawn with that
    /// font. Leaves `glyph` unchanged if there is no fallback font. Asserts that the factory still exists.
    void trySubstituteGlyph(const NNPtr<const Gfx::ExtFontInfo>& extFontInfo, unsigned int codePoint,
                            Gfx::CharMap::GlyphIndexWithAdvance& glyph) const override;

private:
    NNPtr<const Gfx::FontInfo> _fontInfo;
    NNPtr<const FontFace> _fontFace;
};

} // namespace Vell::FontEngine
