#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_GlyphService.h>
#include <FontEngine/Private/FE_OwnDescriptions.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/Utf8.h>

#include <optional>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

namespace {

constexpr const char* file = "FontEngine/Renderer/FE_VectorTextPainter";

} // namespace

VectorTextPainter::VectorTextPainter(Gfx::Painter& painter)
    : _painter(painter) {}

OutlineGlyphRun VectorTextPainter::createGlyphRun(boost::string_ref text,
                                                  const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                                                  const Font& font) {
    // Reads descriptions of this library's own class directly, which saves the references to the objects in
    // between.
    const auto* const own = Internal::findOwnFontInfo(Internal::findOwn(*extFontInfo));
    std::optional<NNPtr<const Gfx::FontFaceInfo>> clientFaceInfo;
    const NNPtr<const Gfx::FontFaceInfo>& faceInfo =
        own != nullptr ? own->viewFontFaceInfo()
                       : clientFaceInfo.emplace(extFontInfo->getFontInfo()->getFontFaceInfo());
    const NNPtr<const FontFace>& face = font.getFace();
    if (!face) {
        doFailAssert(file, 62, "face");
    }
    const Gfx::CharMap& charMap = face->getBasicMetrics().getCharMap();
    const float letterSpacing = extFontInfo->getLetterSpacing();
    const float size = own != nullptr ? own->getSize() : extFontInfo->getFontInfo()->getSize();
    const unsigned short unitsPerEM = face->getHandle()->units_per_EM;
    const float spacingInUnits = (static_cast<float>(unitsPerEM) * letterSpacing) / size;

    std::vector<OutlineGlyph> glyphs;
    glyphs.reserve(text.size()); // the number of bytes, which is at least the number of characters
    Internal::OutlineSource source{
        Internal::OutlineCache::Handle({faceInfo.get(), font.getFontSize(), face->getTransform()}), faceInfo,
        face};
    Internal::FactoryPin factory;
    Internal::PendingOutlines pending;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        for (pending.clear(); position != end && pending.size() != Internal::maxBatchSize;) {
            const Gfx::CharMap::GlyphIndexWithAdvance glyph = charMap[decodeUtf8(position, end)];
            pending.push_back(
                {glyph.glyphIndex, static_cast<float>(unitsPerEM) * glyph.advance + spacingInUnits});
        }
        // Unlike a missing bitmap, a missing outline does not advance the pen, so a vector text shows no
        // gaps.
        face->getGlyphAccess().append(source, pending, _painter, glyphs, factory);
    }
    return OutlineGlyphRun(std::move(glyphs), face->getHandle()->units_per_EM);
}

void VectorTextPainter::drawText(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                                 const Gfx::FontMetrics& fontMetrics) {
    const auto* const font = dynamic_cast<const Font*>(&fontMetrics);
    if (font == nullptr) {
        doFailAssert(file, 36, "font");
    }
    const OutlineGlyphRun run = createGlyphRun(text, extFontInfo, *font);
    const float scale = font->getFontSize() / static_cast<float>(run.getUnitsPerEM());

    _painter.pushTransform();
    _painter.scale({scale, scale});
    for (const OutlineGlyph& glyph : run.getGlyphs()) {
        constexpr bool isFilled = true;
        _painter.drawPath(*glyph.getPath(), isFilled);
        _painter.translate({glyph.getAdvance(), 0.0F});
    }
    _painter.popTransform();
}

} // namespace Vell::FontEngine
