#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/OpenedFont.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gmock/gmock.h>

#include <array>

namespace Vell::FontEngine::Internal {
namespace {

using testing::ElementsAre;
using Testing::FreeTypeSpy;
using Testing::makeFaceInfo;
using Testing::OpenedFont;

// FreeType's flags as the numbers that its documentation guarantees.
constexpr int noBitmap = 8;
constexpr int forceAutoHint = 32;
constexpr int targetLight = 0x10000;

const std::u32string cyrillic = U"\u0410\u0430\u044F";
const std::u32string digits = U"0459";
/// These characters, their neighbours, and all characters for which some family has a rule.
const std::u32string everything = cyrillic + digits + U"\u040F\u0450/:*)+rxqswyAw_\U00010410";
const std::u32string none;

struct Style {
    std::u32string autoHinted;
    std::u32string light;
};

struct Row {
    const char* family;
    std::array<Style, 4> styles; ///< regular, bold, italic, bold italic
};

std::vector<Row> makeTable() {
    const Style byDefault = {none, none};
    const Style always = {everything, none};
    const Style cyrillicAuto = {cyrillic, none};
    const Style cyrillicLight = {none, cyrillic};
    const Style lettersLight = {none, cyrillic + digits};
    return {{"Times New Roman", {byDefault, byDefault, byDefault, Style{U"rx", none}}},
            {"Charter", {always, byDefault, always, always}},
            {"Yu Gothic", {always, always, always, always}},
            {"Yu Gothic Medium", {always, always, always, always}},
            {"Gulim", {cyrillicAuto, cyrillicAuto, cyrillicAuto, cyrillicAuto}},
            {"Cormorant", {cyrillicLight, cyrillicLight, cyrillicLight, cyrillicLight}},
            {"Helvetica", {Style{U"*", cyrillic + digits}, lettersLight, lettersLight, byDefault}},
            {"Helvetica Light", {byDefault, byDefault, byDefault, byDefault}},
            // Similar names are other families.
            {"charter", {byDefault, byDefault, byDefault, byDefault}},
            {"Charter ", {byDefault, byDefault, byDefault, byDefault}},
            {"Yu Gothic Light", {byDefault, byDefault, byDefault, byDefault}},
            {"GulimChe", {byDefault, byDefault, byDefault, byDefault}},
            {"Helvetica Neue", {byDefault, byDefault, byDefault, byDefault}},
            {"Test Sans", {byDefault, byDefault, byDefault, byDefault}}};
}

bool contains(const std::u32string& characters, char32_t character) {
    return characters.find(character) != std::u32string::npos;
}

/// Returns the flags that load a character of a face whose description has that style.
std::string load(const OpenedFont& font, char32_t character, bool bold, bool italic) {
    const KeyFields fields = KeyFields()
                                 .with(&KeyFields::unicode, character)
                                 .with(&KeyFields::face, makeFaceInfo("any name", bold, italic));
    const FreeTypeSpy spy;
    createBitmapGlyph(fields.makeBitmap(), font.face, false);
    return spy.getLines({"FT_Load_Glyph"}).at(0);
}

TEST(Hinting, FollowsTheTableForEveryFamilyStyleAndCharacter) {
    for (const Row& row : makeTable()) {
        const OpenedFont font(makeTestFont(row.family).build());
        ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
        for (unsigned int style = 0; style < 4; ++style) {
            for (const char32_t character : everything) {
                const Style& expected = row.styles.at(style);
                const int flags = noBitmap + (contains(expected.autoHinted, character) ? forceAutoHint : 0) +
                                  (contains(expected.light, character) ? targetLight : 0);
                EXPECT_EQ(load(font, character, (style & 1U) != 0, (style & 2U) != 0),
                          "FT_Load_Glyph 1 " + std::to_string(flags))
                    << row.family << ", style " << style << ", U+" << std::hex
                    << static_cast<unsigned int>(character);
            }
        }
    }
}

TEST(Hinting, DependsOnTheNameInTheFileAndTheStyleOfTheDescription) {
    const OpenedFont font(makeTestFont("Test Sans").setStyle(true, true).build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    const KeyFields fields =
        KeyFields().with(&KeyFields::face, makeFaceInfo("Charter")).with(&KeyFields::transform, 3);
    const FreeTypeSpy spy;
    createBitmapGlyph(fields.makeBitmap(), font.face, false);
    EXPECT_THAT(spy.getLines({"FT_Load_Glyph"}), ElementsAre("FT_Load_Glyph 1 8"));
}

TEST(Hinting, DoesNotDependOnTheSyntheticStyle) {
    const OpenedFont font(makeTestFont("Charter").build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    const KeyFields fields = KeyFields().with(&KeyFields::transform, GlyphTransform::Embolden);
    const FreeTypeSpy spy;
    createBitmapGlyph(fields.makeBitmap(), font.face, false);
    EXPECT_THAT(spy.getLines({"FT_Load_Glyph"}), ElementsAre("FT_Load_Glyph 1 40")) << "regular Charter";
}

TEST(Hinting, IsTheDefaultForANamelessFont) {
    const OpenedFont font(makeTestFont().omitTable("name").build());
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 640, 72, 0), 0);
    EXPECT_EQ(load(font, U'*', false, false), "FT_Load_Glyph 1 8");
}

} // namespace
} // namespace Vell::FontEngine::Internal
