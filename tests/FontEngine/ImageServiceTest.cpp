#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <gtest/gtest.h>

namespace Vell::FontEngine {
namespace {

using Color = cinder::ColorAT<unsigned char>;
constexpr Color color(10, 20, 30, 255);

/// Wraps a bitmap that the test made as a rendered glyph.
BitmapGlyph makeGlyph(unsigned int rows, unsigned int width, const KeyFields& fields = KeyFields(),
                      unsigned char mode = FT_PIXEL_MODE_LCD) {
    struct Owned {
        FT_BitmapGlyphRec_ glyph = {};
        Testing::Bytes pixels;
    };
    const auto owned = std::make_shared<Owned>();
    owned->pixels.resize(static_cast<std::size_t>(rows) * width, 255);
    FT_Bitmap& bitmap = owned->glyph.bitmap;
    bitmap.rows = rows;
    bitmap.width = width;
    bitmap.pitch = static_cast<int>(width);
    bitmap.pixel_mode = mode;
    bitmap.buffer = owned->pixels.data();
    return BitmapGlyph(std::shared_ptr<const FT_BitmapGlyphRec_>(owned, &owned->glyph), {0, 0},
                       fields.makeBitmap());
}

TEST(ImageService, ColorsAGlyphOncePerColor) {
    const Engine engine;
    const BitmapGlyph glyph = makeGlyph(4, 12);
    const auto image = engine.factory->getGlyphBitmapWithSubpixels(glyph, color);
    EXPECT_EQ(engine.factory->getGlyphBitmapWithSubpixels(glyph, color), image);
    EXPECT_EQ(engine.getFace()->getGlyphBitmapWithSubpixels(glyph, color), image) << "through the face";
    EXPECT_EQ(engine.factory->getGlyphBitmapWithSubpixels(glyph, {10, 20, 30, 128}), image)
        << "for any alpha";
    for (const Color other : {Color(10, 20, 31, 255), Color(10, 21, 30, 255), Color(11, 20, 30, 255)}) {
        EXPECT_NE(engine.factory->getGlyphBitmapWithSubpixels(glyph, other), image);
    }
    EXPECT_EQ(image->width, 4U);
    EXPECT_EQ(image->pixelMode, FT_PIXEL_MODE_LCD);
}

TEST(ImageService, DistinguishesGlyphsByAllFieldsOfTheirKeys) {
    const Engine engine;
    const auto paint = [&](const KeyFields& fields) {
        return engine.factory->getGlyphBitmapWithSubpixels(makeGlyph(4, 12, fields), color);
    };
    const KeyFields fields;
    const auto image = paint(fields);
    EXPECT_EQ(paint(fields.with(&KeyFields::unicode, 'B')), image) << "except for the character";
    for (const KeyFields& other :
         {fields.with(&KeyFields::face, Testing::makeFaceInfo("other")), fields.with(&KeyFields::glyph, 2),
          fields.with(&KeyFields::size, 11), fields.with(&KeyFields::transform, GlyphTransform::Slant),
          fields.with(&KeyFields::mode, FT_RENDER_MODE_LCD), fields.with(&KeyFields::ratio, 2),
          fields.with(&KeyFields::scale, cinder::Vec2<float>(2, 1)),
          fields.with(&KeyFields::scale, cinder::Vec2<float>(1, 2)), fields.with(&KeyFields::offset, 4),
          fields.with(&KeyFields::isLast, false)}) {
        EXPECT_NE(paint(other), image);
    }
}

TEST(ImageService, WeighsFourTimesTheBuffer) {
    Engine engine;
    const BitmapGlyph first = makeGlyph(16, 24);
    const BitmapGlyph second = makeGlyph(16, 24, KeyFields().with(&KeyFields::glyph, 2));
    for (const unsigned long limit : {2UL * 2048, 2UL * 2048 - 1}) {
        engine.factory->reset(0, limit);
        const auto image = engine.factory->getGlyphBitmapWithSubpixels(first, color);
        ASSERT_EQ(image->pitch, 32);
        engine.factory->getGlyphBitmapWithSubpixels(second, color);
        EXPECT_EQ(engine.factory->getGlyphBitmapWithSubpixels(first, color) == image, limit == 2UL * 2048);
    }
}

TEST(ImageService, RefusesOtherPixelModesAndCachesNothing) {
    const Engine engine;
    try {
        engine.factory->getGlyphBitmapWithSubpixels(makeGlyph(4, 12, KeyFields(), FT_PIXEL_MODE_GRAY), color);
        ADD_FAILURE() << "a grey bitmap";
    } catch (const FontEngineException& error) {
        EXPECT_STREQ(error.what(), "Failed to create glyph with subpixel support");
        EXPECT_NE(dynamic_cast<const BaseRuntimeError*>(&error), nullptr);
    }
    EXPECT_NE(engine.factory->getGlyphBitmapWithSubpixels(makeGlyph(4, 12), color), nullptr)
        << "the same key";
}

TEST(ImageService, IgnoresAlpha) {
    const Engine engine;
    const auto image = engine.factory->getGlyphBitmapWithSubpixels(makeGlyph(1, 3), {255, 0, 0, 1});
    EXPECT_EQ(Testing::Bytes(image->buffer, image->buffer + 4), (Testing::Bytes{0, 0, 255, 255}));
}

TEST(ImageService, LeavesEvictedImagesToTheirOwners) {
    Engine engine;
    const auto image = engine.factory->getGlyphBitmapWithSubpixels(makeGlyph(1, 3), {255, 0, 0, 1});
    engine.factory->flush();
    EXPECT_NE(engine.factory->getGlyphBitmapWithSubpixels(makeGlyph(1, 3), {255, 0, 0, 1}), image);
    EXPECT_EQ(image->buffer[2], 255);
}

TEST(ImageServiceDeathTest, AssertsItsBitmap) {
    const Engine engine;
    const BitmapGlyph glyph(nullptr, {0, 0}, KeyFields().makeBitmap());
    EXPECT_DEATH(engine.factory->getGlyphBitmapWithSubpixels(glyph, color),
                 Testing::printsAssertion("Utils/Public/Ptr/PtrUtils:254", "plainPtr"));
}

} // namespace
} // namespace Vell::FontEngine
