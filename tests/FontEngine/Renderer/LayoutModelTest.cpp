// Compares both layouts and both painters, bit by bit, with a plain computation for thousands of random
// texts.

#include <FontEngine/Renderer/LayoutModel.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace Vell::FontEngine {
namespace {

using BitmapPtr = std::shared_ptr<const FT_BitmapGlyphRec_>;
using Point = cinder::Vec2<float>;

constexpr int textCount = 3000;
constexpr int textsBetweenFlushes = 64;

/// A glyph at the place that the plain computation gives.
struct ExpectedGlyph {
    BitmapGlyphInfo key;
    float pen;
    BitmapPtr bitmap;
};

unsigned char quantise(float pen, float ratio) {
    const float fraction = pen - floorf(pen);
    const int sixteenths = static_cast<int>(16.0F * fraction);
    return static_cast<unsigned char>(ratio < 1.5F ? 4 * sixteenths : 0);
}

std::vector<ExpectedGlyph> layOutPlainly(const ModelFonts& fonts, const ModelText& text,
                                         const ModelSetting& setting) {
    std::vector<ExpectedGlyph> glyphs;
    float pen = 0.0F;
    for (std::size_t i = 0; i < text.codePoints.size(); ++i) {
        const unsigned int code = text.codePoints[i];
        const bool isLast = i + 1 == text.codePoints.size() || text.codePoints[i + 1] != code;
        const ModelGlyph glyph = fonts.find(code);
        const auto face = Testing::makeFaceInfo(glyph.family);
        const BitmapGlyphInfo key(face, code == '_' ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL, glyph.index,
                                  code, setting.getGlyphSize(), setting.scale, setting.ratio,
                                  quantise(pen, setting.ratio), isLast, GlyphTransform::None);
        const auto& factory = fonts.getFactory();
        glyphs.push_back(
            {key, pen, factory->getBitmapGlyph(key, factory->getFace(face), setting.flipVertically)});
        const float glyphAdvance = setting.getGlyphSize() * glyph.advance;
        const float scaledAdvance = glyphAdvance * setting.scale.x;
        const float scaledSpacing = setting.scale.x * setting.letterSpacing;
        const float advance = scaledAdvance + scaledSpacing;
        pen = advance + pen;
    }
    return glyphs;
}

Font getFont(const ModelFonts& fonts, const ModelSetting& setting) {
    return fonts.getFactory()->getFont(setting.makeExtFontInfo()->getFontInfo());
}

void expectGlyph(const BitmapGlyph& glyph, const ExpectedGlyph& expected) {
    EXPECT_EQ(glyph.getInfo(), expected.key);
    EXPECT_EQ(glyph.getInfo().getUnicode(), expected.key.getUnicode());
    EXPECT_EQ(glyph.getPos(), Point(expected.pen, 0.0F));
    EXPECT_EQ(glyph.getData(), expected.bitmap);
}

void expectBox(const FT_BBox& box, const std::vector<ExpectedGlyph>& glyphs) {
    std::vector<long> lefts;
    std::vector<long> rights;
    std::vector<long> tops;
    std::vector<long> bottoms;
    for (const ExpectedGlyph& glyph : glyphs) {
        const FT_BitmapGlyphRec_& bitmap = *glyph.bitmap;
        lefts.push_back(bitmap.left);
        rights.push_back(bitmap.left + static_cast<long>(bitmap.bitmap.width));
        tops.push_back(bitmap.top);
        bottoms.push_back(bitmap.top - static_cast<long>(bitmap.bitmap.rows));
    }
    const bool isEmpty = glyphs.empty();
    EXPECT_EQ(box.xMin, isEmpty ? 0 : *std::min_element(lefts.begin(), lefts.end()));
    EXPECT_EQ(box.xMax, isEmpty ? 0 : *std::max_element(rights.begin(), rights.end()));
    EXPECT_EQ(box.yMin, isEmpty ? 0 : *std::min_element(bottoms.begin(), bottoms.end()));
    EXPECT_EQ(box.yMax, isEmpty ? 0 : *std::max_element(tops.begin(), tops.end()));
}

/// Calls `check(fonts, random)` for each of many texts and stops at the first failure.
template <class Check>
void forManyTexts(unsigned int seed, const Check& check) {
    const ModelFonts fonts;
    std::mt19937 random(seed); // the same texts in every run
    for (int i = 0; i < textCount && !testing::Test::HasFailure(); ++i) {
        SCOPED_TRACE(i);
        check(fonts, random);
        if (i % textsBetweenFlushes == 0) {
            fonts.getFactory()->flush();
        }
    }
}

TEST(LayoutModel, MatchesTheRasterLayout) {
    forManyTexts(1, [](const ModelFonts& fonts, std::mt19937& random) {
        const ModelText text = makeRandomText(random);
        const ModelSetting setting = makeRandomSetting(random);
        Testing::RecordingPainter painter;
        Testing::RecordingGlyphPainter glyphPainter;
        const BitmapGlyphRun run = RasterTextPainter(painter, glyphPainter, setting.flipVertically)
                                       .createGlyphRun(text.bytes, setting.makeExtFontInfo(),
                                                       getFont(fonts, setting), setting.ratio, setting.scale);
        const std::vector<ExpectedGlyph> expected = layOutPlainly(fonts, text, setting);
        ASSERT_EQ(run.getGlyphs().size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            expectGlyph(run.getGlyphs()[i], expected[i]);
        }
        expectBox(run.getBBox(), expected);
    });
}

Point place(const ExpectedGlyph& glyph, float ratio) {
    const float x = static_cast<float>(glyph.bitmap->left) / ratio + glyph.pen;
    const float y = static_cast<float>(-glyph.bitmap->top) / ratio;
    const float whole = floorf(y);
    return {ratio < 1.5F ? floorf(x) : x, y - whole < 0.7402039766311646F ? whole : y};
}

/// A transform that scales by the setting and then rotates: not at all, by a quarter turn or by any angle.
cinder::MatrixAffine2<float> makeRandomTransform(std::mt19937& random, const Point& scale) {
    const float angles[] = {0.0F, 1.5707964F, static_cast<float>(random() % 6000) / 1000.0F - 3.0F};
    const float angle = angles[random() % 3];
    const cinder::MatrixAffine2<float> rotation(cosf(angle), sinf(angle), -sinf(angle), cosf(angle),
                                                static_cast<float>(random() % 1000) / 7.0F, -40.25F);
    return rotation * cinder::MatrixAffine2<float>(scale.x, 0, 0, scale.y, 0, 0);
}

TEST(LayoutModel, MatchesTheRasterPainterUnderAnyLineTransform) {
    forManyTexts(2, [](const ModelFonts& fonts, std::mt19937& random) {
        const ModelText text = makeRandomText(random);
        ModelSetting setting = makeRandomSetting(random);
        const auto transform = makeRandomTransform(random, setting.scale);
        const float* const m = transform.m;
        setting.scale = {hypotf(m[0], m[1]), hypotf(m[2], m[3])};

        Testing::RecordingPainter painter;
        painter.setTransform(transform);
        Testing::RecordingGlyphPainter glyphPainter;
        RasterTextPainter(painter, glyphPainter, setting.flipVertically)
            .drawText(text.bytes, setting.makeExtFontInfo(), getFont(fonts, setting), {1, 2, 3, 255},
                      setting.ratio);

        Testing::RecordingPainter plain;
        plain.pushTransform();
        static_cast<void>(plain.getTransform());
        plain.resetTransform();
        plain.translate({m[4], m[5]});
        const float angle = atan2f(m[1], m[0]);
        if (fabsf(angle) >= 1.0F / 1048576.0F) {
            plain.rotate(angle);
        }
        plain.popTransform();
        EXPECT_EQ(painter.getOperations(), plain.getOperations());
        const std::vector<ExpectedGlyph> expected = layOutPlainly(fonts, text, setting);
        ASSERT_EQ(glyphPainter.getDrawnGlyphs().size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(glyphPainter.getDrawnGlyphs()[i].position, place(expected[i], setting.ratio)) << i;
        }
    });
}

/// An outline at the place that the plain computation gives, with its advance.
std::vector<OutlineGlyph> layOutPlainlyAsOutlines(const ModelFonts& fonts, const ModelText& text,
                                                  const ModelSetting& setting) {
    Testing::RecordingPainter painter;
    const auto face = Testing::makeFaceInfo("Test Sans");
    const float spacing = 1000.0F * setting.letterSpacing / setting.size;
    std::vector<OutlineGlyph> glyphs;
    for (const unsigned int code : text.codePoints) {
        const ModelGlyph glyph = fonts.findOwn(code);
        const GlyphInfo key(face, glyph.index, setting.getGlyphSize(), GlyphTransform::None);
        const auto& factory = fonts.getFactory();
        const float advance = 1000.0F * glyph.advance;
        glyphs.emplace_back(factory->getOutlineGlyphPath(key, factory->getFace(face), painter),
                            advance + spacing);
    }
    return glyphs;
}

TEST(LayoutModel, MatchesTheVectorLayoutAndTheVectorPainter) {
    forManyTexts(3, [](const ModelFonts& fonts, std::mt19937& random) {
        const ModelText text = makeRandomText(random);
        const ModelSetting setting = makeRandomSetting(random);
        const Font font = getFont(fonts, setting);
        Testing::RecordingPainter builder;
        const OutlineGlyphRun run =
            VectorTextPainter(builder).createGlyphRun(text.bytes, setting.makeExtFontInfo(), font);
        const std::vector<OutlineGlyph> expected = layOutPlainlyAsOutlines(fonts, text, setting);
        EXPECT_EQ(run.getUnitsPerEM(), 1000);
        ASSERT_EQ(run.getGlyphs().size(), expected.size());

        Testing::RecordingPainter painter;
        VectorTextPainter(painter).drawText(text.bytes, setting.makeExtFontInfo(), font);
        Testing::RecordingPainter plain;
        plain.pushTransform();
        const float scale = setting.getGlyphSize() / 1000.0F;
        plain.scale({scale, scale});
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(run.getGlyphs()[i].getPath(), expected[i].getPath()) << i;
            EXPECT_EQ(run.getGlyphs()[i].getAdvance(), expected[i].getAdvance()) << i;
            plain.drawPath(*expected[i].getPath(), true);
            plain.translate({expected[i].getAdvance(), 0.0F});
        }
        plain.popTransform();
        EXPECT_EQ(painter.getOperations(), plain.getOperations());
    });
}

} // namespace
} // namespace Vell::FontEngine
