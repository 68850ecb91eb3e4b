#include <FontEngine/Renderer/FE_DrawText.h>

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

namespace Vell::FontEngine {

TextSize measureText(const FontFactory& factory, boost::string_ref text,
                     const NNPtr<const Gfx::ExtFontInfo>& font) {
    const Font metrics = factory.getFont(font->getFontInfo());
    return {metrics.getTextWidth(text, font), metrics.getHeight(), metrics.getAscent(), metrics.getDescent(),
            metrics.getBaseLineShift()};
}

void drawRasterText(const FontFactory& factory, boost::string_ref text,
                    const NNPtr<const Gfx::ExtFontInfo>& font, const RasterTarget& target) {
    RasterTextPainter(target.painter, target.glyphPainter, target.isBottomUp)
        .drawText(text, font, factory.getFont(font->getFontInfo()), target.color, target.devicePixelRatio);
}

void drawVectorText(const FontFactory& factory, boost::string_ref text,
                    const NNPtr<const Gfx::ExtFontInfo>& font, Gfx::Painter& painter) {
    VectorTextPainter(painter).drawText(text, font, factory.getFont(font->getFontInfo()));
}

} // namespace Vell::FontEngine
