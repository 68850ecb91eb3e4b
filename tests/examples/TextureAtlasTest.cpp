#include "ExampleProcess.h"
#include "Picture.h"

#include <gmock/gmock.h>

namespace Vell::Examples::Testing {

namespace {

using ::testing::HasSubstr;
using Vell::Testing::TemporaryFolder;

constexpr cinder::ColorAT<unsigned char> ink(150, 30, 30, 255);

/// Runs the example and reads its output and its pictures.
struct Atlas {
    explicit Atlas(const std::string& text, const std::string& emoji = "")
        : result(runExample("texture-atlas", {text, folder.getPath("texture.png"), folder.getPath("out.png"),
                                              emoji, folder.getPath("colors.png")})) {}

    Picture readTexture() const { return Picture(folder.getPath("texture.png")); }
    Picture readColors() const { return Picture(folder.getPath("colors.png")); }
    Picture readPicture() const { return Picture(folder.getPath("out.png")); }

    TemporaryFolder folder;
    Vell::Testing::ProcessResult result;
};

/// Draws the same text with the painter that draws each bitmap itself.
Picture drawDirectly(const std::string& text) {
    const TemporaryFolder folder;
    const auto surface = CairoAdapter::makeImageSurface(640, 180);
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    painter.translate({10.0F, 4.0F});
    for (const float size : {16.0F, 24.0F, 32.0F}) {
        const InstalledFont font("DejaVu Sans", false, false, size);
        painter.translate({0.0F, 1.5F * size});
        FontEngine::RasterTextPainter(painter, glyphPainter, false)
            .drawText(text, font.style, *font.metrics, ink, 1.0F);
    }
    cairo_surface_write_to_png(surface.get(), folder.getPath("direct.png").c_str());
    return Picture(folder.getPath("direct.png"));
}

TEST(TextureAtlas, DrawsTheSameFromTheTextureAsDirectly) {
    for (const std::string text : {"Hamburgefonstiv, often", "a_b__c _", ""}) {
        const Atlas atlas(text);
        ASSERT_EQ(atlas.result.status, 0) << atlas.result.err;
        EXPECT_LE(compare(atlas.readPicture(), drawDirectly(text)), 1) << text; // rounded by different code
    }
}

TEST(TextureAtlas, HoldsEachGlyphOfAPictureWithoutRepetitionsOnce) {
    const Atlas atlas("Ag f");
    EXPECT_EQ(atlas.result.out,
              "9 quads of 9 bitmaps and 0 colour images\n"); // three sizes; the space has none
    const int inked = atlas.readPicture().countInk();
    EXPECT_GT(inked, 300);
    EXPECT_EQ(atlas.readTexture().countInk(), inked);
}

TEST(TextureAtlas, PacksARepeatedGlyphOnce) {
    const Atlas once("Hey");
    const Atlas often("Hey\xE3\x80\x80Hey"); // the ideographic space is a whole em wide, so the pen returns
                                             // to the same fraction
    EXPECT_EQ(once.result.out, "9 quads of 9 bitmaps and 0 colour images\n");
    EXPECT_EQ(often.result.out.rfind("18 quads of ", 0), 0U) << often.result.out;
    EXPECT_LT(std::stoi(often.result.out.substr(12)), 18) << often.result.out;
}

TEST(TextureAtlas, HasColorGlyphsOnAPageOfTheirOwn) {
    const std::string grin = "\U0001F600";
    const std::string rocket = "\U0001F680";
    const Atlas atlas("Ag f", grin + rocket + grin);
    ASSERT_EQ(atlas.result.out, "12 quads of 9 bitmaps and 2 colour images\n") << atlas.result.err;
    const Atlas bare("Ag f");
    EXPECT_EQ(compare(atlas.readTexture(), bare.readTexture()), 0);
    EXPECT_EQ(bare.readColors().countInk(), 0);
    EXPECT_EQ(compare(atlas.readColors(), Atlas("", grin + rocket).readColors()), 0);
    EXPECT_EQ(atlas.readPicture().countInk() - bare.readPicture().countInk(),
              atlas.readColors().countInk() + Atlas("", grin).readColors().countInk());
}

TEST(TextureAtlas, ReportsAFullTexture) {
    std::string text;
    for (char c = '!'; c <= '~'; ++c) {
        text += c;
    }
    const Atlas atlas(text + text);
    EXPECT_EQ(atlas.result.status, 1);
    EXPECT_THAT(atlas.result.err, HasSubstr("the texture is full"));
}

} // namespace

} // namespace Vell::Examples::Testing
