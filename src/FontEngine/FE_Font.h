#pragma once

#include <FontEngine/FE_FontFace.h>
#include <Gfx/Public/BasicMetrics.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/UniversalFontMetrics.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::FontEngine {

class FontFactory;

/// A face at a size: the text metrics of the graphics library, and what the text painters draw with. Made by
/// FontFactory::getFont on every request; it shares its face, so it is cheap to make and to move, and its
/// metrics stay valid whatever the factory drops from its caches.
///
/// Immutable but for being assigned to; any number of threads may use one font at once.
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

    /// Replaces `glyph` by the entry of the fallback font for the character, which must then be drawn with
    /// that font; leaves it alone when there is no fallback.
    void trySubstituteGlyph(const NNPtr<const Gfx::ExtFontInfo>& extFontInfo, unsigned int codePoint,
                            Gfx::CharMap::GlyphIndexWithAdvance& glyph) const override;

private:
    NNPtr<const Gfx::FontInfo> _fontInfo;
    NNPtr<const FontFace> _fontFace;
};

} // namespace Vell::FontEngine
