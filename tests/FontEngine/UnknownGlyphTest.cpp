#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/BdfFont.h>
#include <support/CffFont.h>
#include <support/ErrorText.h>
#include <support/RecordingPainter.h>
#include <support/Type1Font.h>
#include <support/Type42Font.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

#include <limits>

namespace Vell::FontEngine {
namespace {

using FontLoaders::FreeTypeException;
using Testing::Bytes;
using Testing::FontBuilder;
using Testing::FreeTypeSpy;
using Testing::getErrorText;

struct NamedFont {
    const char* name;
    Bytes file;
};

/// Fonts of three glyphs, one for each of FreeType's most common drivers.
std::vector<NamedFont> makeFonts() {
    FontBuilder trueType;
    trueType.map('A', trueType.addGlyph(Testing::makeBoxGlyph(600, 0, 0, 500, 700)));
    trueType.map('x', trueType.addGlyph(Testing::makeBoxGlyph(400, 0, 0, 300, 500)));
    Testing::Type1Font type1;
    type1.glyphs = {{"A", 65, Testing::makeBoxGlyph(600, 0, 0, 500, 700)},
                    {"x", 120, Testing::makeBoxGlyph(400, 0, 0, 300, 500)}};
    Testing::CffFont cff;
    cff.charStrings.resize(3, Testing::makeBoxCharString());
    Testing::BdfFont bitmaps;
    bitmaps.glyphs = {{'A', 6, 5, 0, 0, {{0xF8}}}, {'x', 6, 5, 0, 0, {{0xF8}}}, {'y', 6, 5, 0, 0, {{0xF8}}}};
    return {{"TrueType", trueType.build()},
            {"Type 42", Testing::Type42Font{"Wrapped", trueType.build(), {"A", "x"}}.build()},
            {"Type 1", type1.build()},
            {"CFF", cff.build()},
            {"BDF", bitmaps.build()}};
}

std::string getBitmapError(const Engine& engine, unsigned long glyph) {
    const KeyFields fields = KeyFields().with(&KeyFields::glyph, glyph).with(&KeyFields::size, 8.0F);
    return getErrorText<FreeTypeException>(
        [&] { engine.factory->getBitmapGlyph(fields.makeBitmap(), engine.getFace(), false); });
}

std::string getOutlineError(const Engine& engine, unsigned long glyph) {
    const KeyFields fields = KeyFields().with(&KeyFields::glyph, glyph).with(&KeyFields::size, 8.0F);
    Testing::RecordingPainter painter;
    return getErrorText<FreeTypeException>(
        [&] { engine.factory->getOutlineGlyphPath(fields.makeOutline(), engine.getFace(), painter); });
}

} // namespace

TEST(UnknownGlyph, FailsInEveryFormatWithoutReachingFreeType) {
    for (const NamedFont& font : makeFonts()) {
        const Engine engine(font.file);
        const auto glyphCount = static_cast<unsigned long>(engine.getFace()->getHandle()->num_glyphs);
        EXPECT_GE(glyphCount, 3U) << font.name;
        const FreeTypeSpy spy;
        for (const unsigned long glyph :
             {glyphCount, 5UL, 65'536UL, 4'294'967'296UL + 1, std::numeric_limits<unsigned long>::max()}) {
            const std::string text =
                "FT_Load_Glyph() failed, error: 6, glyph index: " + std::to_string(glyph) + ' ';
            EXPECT_EQ(getBitmapError(engine, glyph), text) << font.name;
            EXPECT_EQ(getOutlineError(engine, glyph), text) << font.name;
            EXPECT_EQ(getBitmapError(engine, glyph), text) << "nothing was cached";
        }
        EXPECT_EQ(spy.countCalls("FT_Load_Glyph"), 0U) << font.name;
    }
}

TEST(UnknownGlyph, BeginsAfterTheLastGlyphOfTheFace) {
    for (const NamedFont& font : makeFonts()) {
        const Engine engine(font.file);
        const auto last = static_cast<unsigned long>(engine.getFace()->getHandle()->num_glyphs) - 1;
        EXPECT_EQ(getBitmapError(engine, last), "no exception") << font.name;
    }
}

} // namespace Vell::FontEngine
