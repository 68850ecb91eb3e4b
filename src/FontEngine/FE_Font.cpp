#include <FontEngine/FE_Font.h>

#include <FontEngine/FE_FontFactory.h>

#include <memory>

namespace Vell::FontEngine {

namespace {

/// The metrics of a face, owned together with the face.
std::shared_ptr<const Gfx::BasicMetrics> shareBasicMetrics(const NNPtr<const FontFace>& face) {
    return std::shared_ptr<const Gfx::BasicMetrics>(std::shared_ptr<const FontFace>(face),
                                                    &face->getBasicMetrics());
}

} // namespace

Font::Font(Gfx::FactoryAccessTag, const NNPtr<const Gfx::FontInfo>& fontInfo,
           const NNPtr<const FontFace>& fontFace)
    : UniversalFontMetrics(fontInfo, shareBasicMetrics(fontFace))
    , _fontInfo(fontInfo)
    , _fontFace(fontFace) {}

Font::~Font() = default;

void Font::trySubstituteGlyph(const NNPtr<const Gfx::ExtFontInfo>& extFontInfo, unsigned int codePoint,
                              Gfx::CharMap::GlyphIndexWithAdvance& glyph) const {
    const auto fontInfo = extFontInfo->getFontInfo();
    if (const auto fallback = getFontFactory().getDefaultFontForSymbol(codePoint, fontInfo)) {
        glyph = fallback->getFace()->getBasicMetrics().getCharMap()[codePoint];
    }
}

} // namespace Vell::FontEngine
