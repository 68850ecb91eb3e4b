#include <fuzz/support/CairoGlyphs.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Vell::Fuzz {

namespace {

ScriptedGlyph makeGlyph(const Testing::Bytes& script) {
    ByteReader reader(script);
    return ScriptedGlyph(reader);
}

} // namespace

TEST(ScriptedGlyph, IsSoundIfItsRowsHoldItsPixels) {
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
