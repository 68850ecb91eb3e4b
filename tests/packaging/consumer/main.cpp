// A client that uses only the installed headers: it draws a string and counts the glyphs with ink.

#include "ClientObjects.h"

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <cstdio>
#include <exception>

using namespace Vell;

int main() {
    try {
        const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
        const auto face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>("DejaVu Sans", true, false);
        const auto info =
            makeNNPtr<const FontEngine::Internal::FontInfo>(face, 20.0F, Gfx::TextPositionType::Normal);
        const FontEngine::Font font = factory->getFont(info);
        const NNPtr<const Gfx::ExtFontInfo> style = makeNNPtr<FontEngine::Internal::ExtFontInfo>(info);

        Client::Painter painter;
        Client::GlyphPainter glyphPainter;
        FontEngine::RasterTextPainter(painter, glyphPainter, false)
            .drawText("Ink_", style, font, {0, 0, 0, 255}, 1.0F);
        FontEngine::VectorTextPainter(painter).drawText("Ink_", style, font);
        std::printf("glyphs with ink %d, paths %d, width %.2f, gamma %u\n", glyphPainter.inked, painter.paths,
                    static_cast<double>(font.getTextWidth("Ink_", style)),
                    FontEngine::Internal::encodeGamma(128, 1.2F));
        return glyphPainter.inked == 4 && painter.paths == 4 ? 0 : 1;
    } catch (const BaseRuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
