// The vertical positions of glyphs, float by float around the fraction from which they do not snap.

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace Vell::FontEngine {
namespace {

constexpr std::uint32_t limitBits = 0x3F3D7E02;

float makeFloat(std::uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

std::uint32_t getBits(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

/// States the rule in another way: fractions are never negative, so their bit patterns have the same order.
float snap(float y) {
    const double whole = std::floor(static_cast<double>(y));
    const auto fraction = static_cast<float>(static_cast<double>(y) - whole);
    return getBits(fraction) < limitBits ? static_cast<float>(whole) : y;
}

/// Draws grey glyphs at the given pen positions and returns where they stand.
class Rig {
public:
    std::vector<float> draw(const std::vector<float>& pens, int top = 0, float ratio = 1.0F) const {
        const auto bitmap = std::make_shared<FT_BitmapGlyphRec_>();
        bitmap->top = top;
        bitmap->bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
        std::vector<BitmapGlyph> glyphs;
        for (const float pen : pens) {
            glyphs.emplace_back(bitmap, cinder::Vec2<float>(0, pen), _key);
        }
        Testing::RecordingPainter painter;
        Testing::RecordingGlyphPainter glyphPainter;
        RasterTextPainter(painter, glyphPainter, false)
            .drawGlyphRun(BitmapGlyphRun(glyphs, {0, -3, 0, 9}), _font, {0, 0, 0, 255}, ratio);
        std::vector<float> tops;
        for (const Testing::DrawnGlyph& glyph : glyphPainter.getDrawnGlyphs()) {
            tops.push_back(glyph.position.y);
        }
        return tops;
    }

private:
    Engine _engine;
    Font _font = _engine.getFont();
    BitmapGlyphInfo _key = KeyFields().makeBitmap();
};

/// The floats up to `count` steps below and above a value.
std::vector<float> listNeighbours(float value, int count) {
    std::vector<float> values = {value};
    float below = value;
    float above = value;
    for (int i = 0; i < count; ++i) {
        below = std::nextafter(below, -std::numeric_limits<float>::infinity());
        above = std::nextafter(above, std::numeric_limits<float>::infinity());
        values.insert(values.end(), {below, above});
    }
    return values;
}

TEST(TopSnapping, EndsAtExactlyThisFloat) {
    const std::vector<float> tops =
        Rig().draw({makeFloat(limitBits - 1), makeFloat(limitBits), makeFloat(limitBits + 1)});
    EXPECT_EQ(tops, (std::vector<float>{0.0F, makeFloat(limitBits), makeFloat(limitBits + 1)}));
}

TEST(TopSnapping, DecidesEveryFloatAroundTheLimit) {
    const std::vector<float> pens = listNeighbours(makeFloat(limitBits), 5000);
    const std::vector<float> tops = Rig().draw(pens);
    ASSERT_EQ(tops.size(), pens.size());
    for (std::size_t i = 0; i < pens.size(); ++i) {
        EXPECT_EQ(getBits(tops[i]), getBits(snap(pens[i]))) << pens[i];
    }
}

TEST(TopSnapping, DecidesAroundTheLimitAboveEveryWholeUnit) {
    const Rig rig;
    for (const double whole : {-70000.0, -4096.0, -100.0, -13.0, -3.0, -2.0, -1.0, 1.0, 2.0, 3.0, 4.0, 12.0,
                               100.0, 4095.0, 70000.0, 2097151.0}) {
        const auto limit = static_cast<float>(whole + static_cast<double>(makeFloat(limitBits)));
        const std::vector<float> pens = listNeighbours(limit, 20);
        const std::vector<float> tops = rig.draw(pens);
        std::size_t snapped = 0;
        for (std::size_t i = 0; i < pens.size(); ++i) {
            EXPECT_EQ(getBits(tops[i]), getBits(snap(pens[i]))) << pens[i];
            snapped += tops[i] != pens[i] ? 1 : 0;
        }
        EXPECT_GT(snapped, 0U) << whole;
        EXPECT_LT(snapped, pens.size()) << whole;
    }
}

TEST(TopSnapping, RoundsTheFractionBeforeItIsCompared) {
    // 2^-25 below the limit above -1 lies halfway between two fractions, and the even one is the limit.
    const float halfway = std::nextafter(makeFloat(limitBits) - 1.0F, -1.0F);
    ASSERT_LT(static_cast<double>(halfway) + 1.0, static_cast<double>(makeFloat(limitBits)));
    EXPECT_EQ(Rig().draw({halfway}), (std::vector<float>{halfway}));
    EXPECT_EQ(Rig().draw({std::nextafter(halfway, -1.0F)}), (std::vector<float>{-1.0F}));
}

TEST(TopSnapping, KeepsPositionsJustBelowZero) {
    const float denormal = std::numeric_limits<float>::denorm_min();
    EXPECT_EQ(Rig().draw({-denormal, -1e-9F, denormal, -0.2F, -0.3F}),
              (std::vector<float>{-denormal, -1e-9F, 0.0F, -0.2F, -1.0F}));
}

TEST(TopSnapping, AddsTheTopOfTheBitmapFirst) {
    const Rig rig;
    for (const int top : {-7, -1, 1, 2, 5, 300}) {
        for (const float ratio : {0.75F, 1.0F, 1.5F, 3.0F}) {
            const float above = static_cast<float>(-top) / ratio;
            const std::vector<float> pens = listNeighbours(makeFloat(limitBits) - above, 40);
            const std::vector<float> tops = rig.draw(pens, top, ratio);
            for (std::size_t i = 0; i < pens.size(); ++i) {
                EXPECT_EQ(getBits(tops[i]), getBits(snap(above + pens[i]))) << top << " " << pens[i];
            }
        }
    }
}

} // namespace
} // namespace Vell::FontEngine
