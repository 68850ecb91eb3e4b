// Bitmaps of a font are the same pixels whether the engine serves them or cairo's own fonts draw them.

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/Color/FE_DrawColorGlyphs.h>
#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_FontFactory.h>
#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/OpenedFont.h>

#include <cairo-ft.h>

#include <gtest/gtest.h>

#include <fstream>
#include <ios>
#include <memory>

namespace Vell::CairoAdapter {
namespace {

using FontEngine::PlacedGlyph;
using Testing::Bytes;

constexpr int extent = 200;
constexpr double penX = 20;
constexpr double penY = 150;
constexpr float strikeSize = 109.0F;

Bytes readNotoColorEmoji() {
    std::ifstream file("/usr/share/fonts/truetype/noto/NotoColorEmoji.ttf", std::ios::binary | std::ios::ate);
    Bytes bytes(file ? static_cast<std::size_t>(file.tellg()) : 0);
    file.seekg(0).read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

Bytes copyPixels(cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    const unsigned char* const data = cairo_image_surface_get_data(surface);
    return Bytes(data, data + cairo_image_surface_get_stride(surface) * extent);
}

struct FaceDeleter {
    void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
};

Bytes drawByCairo(const Testing::OpenedFont& font, unsigned int glyph) {
    const SurfacePtr surface = makeImageSurface(extent, extent);
    const ContextPtr context = makeContext(surface.get());
    const std::unique_ptr<cairo_font_face_t, FaceDeleter> face(
        cairo_ft_font_face_create_for_ft_face(font.get(), 0));
    cairo_set_font_face(context.get(), face.get());
    cairo_set_font_size(context.get(), strikeSize);
    const cairo_glyph_t placed = {glyph, penX, penY};
    cairo_show_glyphs(context.get(), &placed, 1);
    return copyPixels(surface.get());
}

Bytes drawByEngine(const Bytes& font, unsigned int glyph) {
    const auto loader = std::make_shared<Testing::CountingLoader>();
    loader->setFont("Test Sans", false, false, font);
    const auto factory = FontEngine::FontFactory::create(loader, "Test Sans");
    const Testing::FaceInfoPtr faceInfo = Testing::makeFaceInfo();
    const SurfacePtr surface = makeImageSurface(extent, extent);
    CairoPainter painter(surface.get());
    CairoGlyphPainter glyphPainter(painter, {0, 0, 0, 255});
    PlacedGlyph placed = {static_cast<unsigned short>(glyph), true, 'A', {penX, penY}};
    const std::size_t others =
        drawColorGlyphs(factory->getColorGlyphs(),
                        {faceInfo, factory->getFace(faceInfo), strikeSize, 1.0F, 1.0F, {0, 0, 0, 255}},
                        glyphPainter, &placed, 1);
    EXPECT_EQ(others, 0U);
    return copyPixels(surface.get());
}

TEST(CairoColorStrike, IsDrawnByTheEngineAsByCairo) {
    const Bytes file = readNotoColorEmoji();
    ASSERT_FALSE(file.empty()) << "needs the package fonts-noto-color-emoji";
    static const Testing::OpenedFont font(file); // cairo's caches may keep its face
    for (const unsigned int character : {0x1F600U, 0x1F680U, 0x2764U, 0x1F44DU}) {
        const unsigned int glyph = FT_Get_Char_Index(font.get(), character);
        const Bytes expected = drawByCairo(font, glyph);
        EXPECT_NE(expected, Bytes(expected.size(), 0));
        EXPECT_EQ(drawByEngine(file, glyph), expected) << character;
    }
}

} // namespace
} // namespace Vell::CairoAdapter
