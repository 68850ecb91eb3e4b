#include <fuzz/support/CairoGlyphs.h>
#include <fuzz/support/CairoPicture.h>
#include <fuzz/support/CairoRules.h>
#include <fuzz/support/Finding.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <utility>

namespace Vell::Fuzz {

namespace {

constexpr int width = 5;
constexpr int height = 3;

/// Whether a change of the byte `distance` behind the first pixel is found out.
bool isFoundOut(std::ptrdiff_t distance) {
    CairoPicture picture(CAIRO_FORMAT_ARGB32, width, height);
    unsigned char& byte = picture.getBytes()[static_cast<std::size_t>(
        static_cast<std::ptrdiff_t>(picture.getFirstPixel()) + distance)];
    byte = static_cast<unsigned char>(byte + 1);
    try {
        picture.checkFrame();
        return false;
    } catch (const Finding&) {
        return true;
    }
}

class ContextRule : public testing::Test {
protected:
    ContextRule() { cairo_set_source_rgb(context.get(), 1.0, 0.0, 0.0); }

    void expectFoundOut(const std::function<void(cairo_t*)>& change) {
        const ContextSettings settings(context.get());
        EXPECT_NO_THROW(checkContext(context.get(), settings));
        change(context.get());
        EXPECT_THROW(checkContext(context.get(), settings), Finding);
    }

    CairoAdapter::SurfacePtr surface = CairoAdapter::makeImageSurface(width, height);
    CairoAdapter::ContextPtr context = CairoAdapter::makeContext(surface.get());
};

ScriptedGlyph makeGlyph(const Testing::Bytes& script) {
    ByteReader reader(script);
    return ScriptedGlyph(reader);
}

} // namespace

TEST(CairoPicture, FindsOutWhatIsDrawnOutsideOfIt) {
    constexpr std::ptrdiff_t lastOfRow = 4 * width - 1;
    EXPECT_TRUE(isFoundOut(-1));
    EXPECT_FALSE(isFoundOut(0));
    EXPECT_FALSE(isFoundOut(lastOfRow));
    EXPECT_TRUE(isFoundOut(lastOfRow + 1));
}

TEST(CairoPicture, ComparesWhatHasAMeaning) {
    for (const auto& [format, difference] :
         {std::pair(CAIRO_FORMAT_ARGB32, 7), std::pair(CAIRO_FORMAT_RGB24, 0)}) {
        CairoPicture picture(format, width, height);
        const CairoPicture other(format, width, height);
        picture.getBytes()[picture.getFirstPixel() + 3] = 7; // the alpha of a little-endian word
        EXPECT_EQ(picture.getGreatestDifference(other), difference);
    }
}

TEST_F(ContextRule, WantsEverySettingBack) {
    expectFoundOut([](cairo_t* changed) { cairo_translate(changed, 1.0, 0.0); });
    expectFoundOut([](cairo_t* changed) { cairo_set_operator(changed, CAIRO_OPERATOR_ADD); });
    expectFoundOut([](cairo_t* changed) { cairo_set_antialias(changed, CAIRO_ANTIALIAS_NONE); });
    expectFoundOut([](cairo_t* changed) { cairo_set_fill_rule(changed, CAIRO_FILL_RULE_EVEN_ODD); });
    expectFoundOut([](cairo_t* changed) { cairo_set_line_width(changed, 7.0); });
    expectFoundOut([](cairo_t* changed) { cairo_set_tolerance(changed, 7.0); });
    expectFoundOut([](cairo_t* changed) { cairo_set_source_rgb(changed, 0.0, 0.0, 1.0); });
    expectFoundOut([](cairo_t* changed) {
        cairo_rectangle(changed, 0.0, 0.0, 1.0, 1.0);
        cairo_clip(changed);
    });
}

TEST_F(ContextRule, WantsNoPathBack) {
    expectFoundOut([](cairo_t* changed) { cairo_move_to(changed, 1.0, 1.0); });
}

TEST_F(ContextRule, WantsAContextThatWorks) {
    expectFoundOut([](cairo_t* changed) { cairo_scale(changed, 0.0, 0.0); });
}

TEST(ScriptedGlyph, IsSoundWhereItsRowsHoldItsPixels) {
    constexpr unsigned char gray = 2;
    EXPECT_TRUE(makeGlyph({gray, 9, 7, 0, 0, 1}).isSound());
    EXPECT_FALSE(makeGlyph({gray, 9, 7, 0xF8, 0, 1}).isSound()) << "a byte too short";
    EXPECT_TRUE(makeGlyph({gray, 9, 1, 0xF8, 0, 1}).isSound()) << "no row follows";
    EXPECT_TRUE(makeGlyph({gray, 9, 7, 0, 4, 1}).isSound()) << "upside down";
    EXPECT_FALSE(makeGlyph({gray, 9, 1, 0, 1, 1}).isSound()) << "wider than any image";
    EXPECT_FALSE(makeGlyph({0, 9, 7, 0, 0, 1}).isSound()) << "FT_PIXEL_MODE_NONE";
}

TEST(ScriptedGlyph, HasTheColoursOfItsMode) {
    const ScriptedGlyph lcd = makeGlyph({5, 9, 1, 0, 0, 1});
    const ScriptedGlyph bgra = makeGlyph({7, 9, 1, 0, 0, 1});
    for (std::size_t i = 0; i < 9 * 4; i += 4) {
        const unsigned char* const color = bgra.getImage().buffer + i;
        EXPECT_LE(std::max({color[0], color[1], color[2]}), color[3]);
        std::uint32_t word = 0;
        std::memcpy(&word, lcd.getImage().buffer + i, sizeof(word));
        EXPECT_TRUE(word == 0 || word >> 24 == 0xFF) << word;
    }
}

} // namespace Vell::Fuzz
