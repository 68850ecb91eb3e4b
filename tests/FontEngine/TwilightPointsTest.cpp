// The only way in which a glyph can depend on glyphs drawn before it: TrueType programs may move points of
// the twilight zone, and FreeType clears that zone only when a face is sized.

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/OpenedFont.h>

#include <gtest/gtest.h>

#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;

/// Instruction codes of the TrueType interpreter.
enum Code : unsigned char {
    alongY = 0x00,             // SVTCA[y]
    setReferencePoint = 0x10,  // SRP0
    setReferenceZone = 0x13,   // SZP0
    setAllZones = 0x16,        // SZPS
    setCount = 0x17,           // SLOOP
    shiftByPixels = 0x38,      // SHPIX
    alignWithReference = 0x3C, // ALIGNRP
    push = 0xB0                // PUSHB; with the number of bytes less one added
};
constexpr unsigned char twilight = 0;
constexpr unsigned char onePixel = 64; // in 26.6

/// Boxes of 7 pixels at size 10.
struct TwilightGlyph {
    static constexpr unsigned int mover = 1; ///< moves point 0 of the twilight zone up by a pixel
    static constexpr unsigned int user = 2;  ///< aligns its lower edge with that point
};

Bytes makeTwilightFont() {
    Testing::FontGlyph mover = Testing::makeBoxGlyph(600, 100, 0, 500, 700);
    mover.instructions = {alongY, push, twilight, setAllZones, push + 1, 0, onePixel, shiftByPixels};
    Testing::FontGlyph user = Testing::makeBoxGlyph(600, 100, 0, 500, 700);
    user.instructions = {
        alongY, push, twilight, setReferenceZone,  push, 0, setReferencePoint, push, 0, push, 3,
        push,   2,    setCount, alignWithReference};
    Testing::FontBuilder font("Test Sans");
    font.map('A', font.addGlyph(mover));
    font.map('B', font.addGlyph(user));
    return font.build();
}

unsigned int countRows(const FacePtr& face, unsigned int glyph, float size = 10.0F) {
    const KeyFields fields = KeyFields().with(&KeyFields::glyph, glyph).with(&KeyFields::size, size);
    return face->getBitmapGlyph(fields.makeBitmap(), false)->bitmap.rows;
}

/// Draws glyphs with FreeType alone, as an application might, and returns the rows of the last one.
unsigned int countRowsPlainly(const std::vector<unsigned int>& glyphs, bool isSizedForEach) {
    const Testing::OpenedFont font(makeTwilightFont());
    EXPECT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    for (const unsigned int glyph : glyphs) {
        EXPECT_TRUE(!isSizedForEach || FT_Set_Char_Size(font.get(), 0, 640, 72, 0) == 0);
        EXPECT_EQ(FT_Load_Glyph(font.get(), glyph, FT_LOAD_RENDER), 0);
    }
    return font->glyph->bitmap.rows;
}

TEST(TwilightPoints, KeepTheChangesOfAnEarlierGlyphOfTheSameSize) {
    EXPECT_EQ(countRows(Engine(makeTwilightFont()).getFace(), TwilightGlyph::user), 7U) << "drawn first";
    const Engine engine(makeTwilightFont());
    EXPECT_EQ(countRows(engine.getFace(), TwilightGlyph::mover), 7U);
    EXPECT_EQ(countRows(engine.getFace(), TwilightGlyph::user), 6U);
}

TEST(TwilightPoints, AreClearedWhenTheFaceIsSized) {
    const Engine engine(makeTwilightFont());
    countRows(engine.getFace(), TwilightGlyph::mover);
    countRows(engine.getFace(), TwilightGlyph::mover, 20.0F);
    EXPECT_EQ(countRows(engine.getFace(), TwilightGlyph::user), 7U);
}

TEST(TwilightPoints, AreClearInAFaceOpenedAfterAFlush) {
    const Engine engine(makeTwilightFont());
    countRows(engine.getFace(), TwilightGlyph::mover);
    engine.factory->flush();
    EXPECT_EQ(countRows(engine.getFace(), TwilightGlyph::user), 7U);
}

TEST(TwilightPoints, AffectEveryApplicationThatSizesAFaceOnce) {
    EXPECT_EQ(countRowsPlainly({TwilightGlyph::mover, TwilightGlyph::user}, false), 6U);
    EXPECT_EQ(countRowsPlainly({TwilightGlyph::mover, TwilightGlyph::user}, true), 7U);
}

} // namespace
} // namespace Vell::FontEngine
