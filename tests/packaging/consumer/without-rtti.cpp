// A client without type information (-fno-rtti) that implements every interface: it compiles, links and
// draws.

#include "ClientObjects.h"

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <cstdio>
#include <exception>

#if defined(__GXX_RTTI) || defined(__cpp_rtti)
#error "compile this client with -fno-rtti"
#endif

namespace {

using namespace Client;

constexpr const char* alef = "\xD7\x90"; // in DejaVu Sans, not in DejaVu Sans Mono
const std::string text = std::string("Ink__") + alef;

int failures = 0;

void expect(bool isTrue, const char* what) {
    if (!isTrue) {
        std::fprintf(stderr, "failed: %s\n", what);
        ++failures;
    }
}

/// A factory with the client's loader, and a font and a text style with the client's description classes.
struct Setting {
    explicit Setting(NNPtr<const Gfx::FontFaceInfo> face)
        : info(makeNNPtr<const FontInfo>(std::move(face))) {}

    NNPtr<FontEngine::FontFactory> factory =
        FontEngine::FontFactory::create(makeNNPtr<const Loader>("DejaVu Sans"), "DejaVu Sans");
    NNPtr<const Gfx::FontInfo> info;
    NNPtr<const Gfx::ExtFontInfo> style = makeNNPtr<const ExtFontInfo>(info);
    FontEngine::Font font = factory->getFont(info);
};

Setting makeSetting() {
    return Setting(makeNNPtr<const FaceInfo>("DejaVu Sans Mono"));
}

FontEngine::BitmapGlyphRun layOut(const Setting& setting) {
    Painter painter;
    GlyphPainter glyphPainter;
    return FontEngine::RasterTextPainter(painter, glyphPainter, false)
        .createGlyphRun(text, setting.style, setting.font, 1.0F, {1.0F, 1.0F});
}

void drawBitmaps() {
    const Setting setting = makeSetting();
    for (int warmth = 0; warmth < 2; ++warmth) { // the second time out of the caches
        Painter painter;
        GlyphPainter glyphPainter;
        FontEngine::RasterTextPainter(painter, glyphPainter, false)
            .drawText(text, setting.style, setting.font, {0, 0, 0, 255}, 1.0F);
        expect(glyphPainter.inked == 6, "each glyph has ink");
        RunPainter runPainter;
        FontEngine::RasterTextPainter(painter, runPainter, false)
            .drawText(text, setting.style, setting.font, {0, 0, 0, 255}, 1.0F);
        expect(runPainter.calls == "(gggggg)", "a run painter hears of its run");
    }
}

void drawOutlines() {
    const Setting setting = makeSetting();
    Painter painter;
    FontEngine::VectorTextPainter(painter).drawText("Ink", setting.style, setting.font);
    expect(painter.segments > 20, "outlines are drawn");
}

void fallBack() {
    const auto run = layOut(makeSetting());
    expect(run.getGlyphs().size() == 6, "no glyph is missing");
    const auto& key = run.getGlyphs().back().getInfo();
    expect(key.getFaceInfo()->getName() == "DejaVu Sans", "the fallback font draws what the font lacks");
}

void describe() {
    const auto key = [](const NNPtr<const Gfx::FontFaceInfo>& face) {
        return FontEngine::GlyphInfo(face, 1, 10.0F, FontEngine::GlyphTransform::None);
    };
    const auto renamed = key(makeNNPtr<const RenamedFaceInfo>("A"));
    const auto held = key(makeNNPtr<const FontEngine::Internal::FontFaceInfo>("held", false, false));
    expect(renamed == renamed && renamed == key(makeNNPtr<const FaceInfo>("A")), "equal by what they answer");
    expect(renamed != held && held == held && held == key(makeNNPtr<const FaceInfo>("held")),
           "not by what they hold");
    const Setting setting(makeNNPtr<const RenamedFaceInfo>("DejaVu Sans Mono"));
    expect(layOut(setting).getGlyphs().size() == 6, "a derived description draws");
}

void drawWithCairo() {
    using namespace CairoAdapter;
    const Setting setting = makeSetting();
    const SurfacePtr surface = makeImageSurface(200, 60);
    CairoPainter painter(surface.get());
    CairoGlyphPainter glyphPainter(painter, {0, 0, 0, 255});
    painter.translate({10.0F, 40.0F});
    FontEngine::RasterTextPainter(painter, glyphPainter, false)
        .drawText(text, setting.style, setting.font, {0, 0, 0, 255}, 1.0F);
    FontEngine::VectorTextPainter(painter).drawText("Ink", setting.style, setting.font);
    cairo_surface_flush(surface.get());
    expect(cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS, "cairo is content");
    FontEngine::BitmapGlyphImage pixels;
    pixels.rows = 60;
    pixels.width = 200;
    pixels.pitch = cairo_image_surface_get_stride(surface.get());
    pixels.buffer = cairo_image_surface_get_data(surface.get());
    expect(hasInk(pixels), "the picture has ink");
    try {
        painter.drawPath(Path(), true);
        expect(false, "cairo draws its own paths only");
    } catch (const CairoAdapterException&) {
    }
}

void measure() {
    const Setting setting = makeSetting();
    const std::shared_ptr<const FontEngine::FontFace> face = setting.font.getFace();
    const WideMetrics wide(setting.info,
                           std::shared_ptr<const Gfx::BasicMetrics>(face, &face->getBasicMetrics()));
    expect(wide.getTextWidth(alef, setting.style) == 40.5F, "metrics of a client substitute");
    const auto own = MetricsFactory().getFontMetrics(setting.info);
    expect(own->getTextWidth("four", setting.style) == 4.0F, "metrics of a client measure");
    expect(setting.font.getTextWidth("four", setting.style) > 40.0F, "so do those of the library");
}

void findFiles() {
    const auto face = makeNNPtr<const FaceInfo>("DejaVu Sans");
    const auto installed = FontLoaders::createPlatformDefaultFontLoader("DejaVu Sans");
    const auto bytes = installed->loadFont(face);
    expect(FontLoaders::findFontFile(*installed, bytes).has_value(), "an installed font has a file");
    expect(!FontLoaders::findFontFile(Loader(""), bytes).has_value(), "a client's loader knows of none");
}

} // namespace

int main() {
    try {
        drawBitmaps();
        drawOutlines();
        fallBack();
        describe();
        drawWithCairo();
        measure();
        findFiles();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return failures == 0 ? 0 : 1;
}
