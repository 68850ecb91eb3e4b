#include <FontEngine/Color/FE_ColorGlyphInfo.h>

#include <support/Descriptions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Vell::FontEngine {
namespace {

using Testing::makeFaceInfo;

using PalettePtr = std::shared_ptr<const ColorPalette>;

constexpr PaintColor red(255, 0, 0, 255);
constexpr PaintColor blue(0, 0, 255, 255);

struct Fields {
    Testing::FaceInfoPtr face = makeFaceInfo();
    unsigned long glyph = 36;
    float size = 12.5F;
    float scale = 1.5F;
    float ratio = 2.0F;
    ColorPalette palette{1, {{3, red}}};
    PaintColor foreground = blue;

    template <class Field, class Value>
    Fields with(Field Fields::*field, const Value& value) const {
        Fields changed = *this;
        changed.*field = static_cast<Field>(value);
        return changed;
    }

    /// With a palette of its own.
    ColorGlyphInfo make() const {
        return ColorGlyphInfo(face, glyph, size, scale, ratio, std::make_shared<const ColorPalette>(palette),
                              foreground);
    }
};

TEST(ColorGlyphInfo, ReturnsItsArguments) {
    const auto face = makeFaceInfo();
    const auto palette = std::make_shared<const ColorPalette>();
    const ColorGlyphInfo key(face, 7, 12.5F, 1.5F, 2.0F, palette, red);
    EXPECT_EQ(key.getFaceInfo().get(), face.get());
    EXPECT_EQ(key.getGlyphIndex(), 7U);
    EXPECT_EQ(key.getFontSize(), 12.5F);
    EXPECT_EQ(key.getTransform(), GlyphTransform::None);
    EXPECT_EQ(key.getScale(), 1.5F);
    EXPECT_EQ(key.getDevicePixelRatio(), 2.0F);
    EXPECT_EQ(key.getPalette(), palette);
    EXPECT_EQ(key.getForeground(), red);
    EXPECT_EQ(key.getPixelsPerEm(), 37.5F);
}

TEST(ColorGlyphInfo, EqualsAKeyOfEqualValues) {
    const Fields fields;
    const ColorGlyphInfo key = fields.make();
    const ColorGlyphInfo other = fields.with(&Fields::face, makeFaceInfo()).make();
    EXPECT_TRUE(key == other);
    EXPECT_FALSE(key != other);
    EXPECT_EQ(key.hash(), other.hash());
}

TEST(ColorGlyphInfo, ChangesWithEachField) {
    const Fields fields;
    const ColorGlyphInfo key = fields.make();
    for (const Fields& changed :
         {fields.with(&Fields::face, makeFaceInfo("Test Serif")),
          fields.with(&Fields::face, makeFaceInfo("Test Sans", true)), fields.with(&Fields::glyph, 37),
          fields.with(&Fields::size, std::nextafter(12.5F, 13.0F)), fields.with(&Fields::scale, 1.0F),
          fields.with(&Fields::ratio, 1.0F), fields.with(&Fields::palette, ColorPalette{2, {{3, red}}}),
          fields.with(&Fields::palette, ColorPalette{1, {{4, red}}}),
          fields.with(&Fields::palette, ColorPalette{1, {{3, blue}}}),
          fields.with(&Fields::palette, ColorPalette{1, {}}), fields.with(&Fields::palette, ColorPalette{}),
          fields.with(&Fields::foreground, red),
          fields.with(&Fields::foreground, PaintColor(0, 0, 255, 0))}) {
        EXPECT_TRUE(changed.make() != key);
        EXPECT_NE(changed.make().hash(), key.hash());
    }
}

TEST(ColorGlyphInfo, TakesNoPaletteForTheFirstOne) {
    const Fields fields;
    const auto make = [&](const PalettePtr& palette) {
        return ColorGlyphInfo(fields.face, 1, 10.0F, 1.0F, 1.0F, palette, red);
    };
    const ColorGlyphInfo first = make(std::make_shared<const ColorPalette>());
    EXPECT_EQ(make(nullptr), first);
    EXPECT_EQ(first, make(nullptr));
    EXPECT_EQ(make(nullptr).hash(), first.hash());
    EXPECT_NE(make(nullptr), make(std::make_shared<const ColorPalette>(ColorPalette{1, {}})));
}

TEST(ColorGlyphInfo, EqualsNoKeyIfANumberIsNotOne) {
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    for (float Fields::*const field : {&Fields::size, &Fields::scale, &Fields::ratio}) {
        const ColorGlyphInfo key = Fields().with(field, notANumber).make();
        EXPECT_FALSE(key == key);
        EXPECT_EQ(key.hash(), key.hash());
    }
}

TEST(ColorGlyphInfo, HashesZerosOfBothSignsAlike) {
    const ColorGlyphInfo plus = Fields().with(&Fields::scale, 0.0F).make();
    const ColorGlyphInfo minus = Fields().with(&Fields::scale, -0.0F).make();
    EXPECT_EQ(plus, minus);
    EXPECT_EQ(plus.hash(), minus.hash());
}

} // namespace
} // namespace Vell::FontEngine
