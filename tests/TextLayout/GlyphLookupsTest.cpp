#include <TextLayout/Private/GlyphLookups.h>

#include <hb-ot.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

HarfBuzzPtr<hb_font_t> openFont(const char* path) {
    const HarfBuzzPtr<hb_blob_t> blob(hb_blob_create_from_file(path));
    const HarfBuzzPtr<hb_face_t> face(hb_face_create(blob.get(), 0));
    return HarfBuzzPtr<hb_font_t>(hb_font_create(face.get()));
}

hb_codepoint_t findGlyph(hb_font_t* font, hb_codepoint_t character) {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(font, character, &glyph) != 0 ? glyph : 0;
}

TEST(GlyphLookups, AnswerAsTheFontDoes) {
    const auto font = openFont("/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc");
    GlyphLookups lookups(font.get());
    const auto fast = lookups.makeFont();
    unsigned int glyphs = 0;
    for (hb_codepoint_t character = 0; character <= 0x2A700;
         ++character) { // with two planes beyond the first
        const hb_codepoint_t glyph = findGlyph(font.get(), character);
        glyphs += glyph != 0 ? 1 : 0;
        ASSERT_EQ(lookups.findGlyph(character), glyph) << character;
        ASSERT_EQ(findGlyph(fast.get(), character), glyph) << character;
    }
    EXPECT_GT(glyphs, 40000U);
    for (const hb_codepoint_t glyph : {0U, 1U, 255U, 256U, 34567U, 65534U, 65535U, 65536U, 1000000U}) {
        EXPECT_EQ(lookups.getAdvance(glyph), hb_font_get_glyph_h_advance(font.get(), glyph)) << glyph;
        EXPECT_EQ(hb_font_get_glyph_h_advance(fast.get(), glyph), lookups.getAdvance(glyph)) << glyph;
    }
    EXPECT_NE(lookups.getAdvance(1), 0);
}

TEST(GlyphLookups, StopAtTheFirstCharacterWithoutAGlyph) {
    const auto font = openFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    GlyphLookups lookups(font.get());
    const auto fast = lookups.makeFont();
    constexpr hb_codepoint_t characters[] = {'a', 'b', 0xE000, 'c'};
    hb_codepoint_t glyphs[] = {0, 0, 0, 0};
    EXPECT_EQ(hb_font_get_nominal_glyphs(fast.get(), 4, characters, sizeof(hb_codepoint_t), glyphs,
                                         sizeof(hb_codepoint_t)),
              2U);
    EXPECT_EQ(glyphs[1], findGlyph(font.get(), 'b'));
    EXPECT_EQ(glyphs[3], 0U);
}

} // namespace

} // namespace Vell::Testing
