#include <support/BdfFont.h>
#include <support/ErrorText.h>
#include <support/FontBuilder.h>
#include <support/Type1Font.h>

#include <FontLoaders/FontLoaders.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using ::testing::HasSubstr;

std::optional<std::string> findReason(Bytes bytes) {
    return findReasonNotToServe(std::make_shared<const Bytes>(std::move(bytes)));
}

const std::optional<std::string> nothing;

} // namespace

TEST(ServableFonts, HaveACharmapEvenIfItIsEmpty) {
    for (const CharMapKind kind : {CharMapKind::MacRoman, CharMapKind::Symbol, CharMapKind::Unicode}) {
        EXPECT_EQ(findReason(FontBuilder().addCharMap(kind).build()), nothing) << static_cast<int>(kind);
    }
    EXPECT_EQ(findReason(FontBuilder("Wingdings").addCharMap(CharMapKind::Symbol).build()), nothing);
    EXPECT_EQ(findReason(FontBuilder().build()), "it has no charmap");
    EXPECT_EQ(findReason(FontBuilder().map('A', 0).omitTable("cmap").build()), "it has no charmap");
}

TEST(ServableFonts, MayHaveBitmapsOnly) {
    BdfFont font;
    font.glyphs = {{'A', 8, 8, 0, 0, std::vector<Bytes>(7, {0xFF})}};
    EXPECT_EQ(findReason(font.build()), nothing);
}

TEST(ServableFonts, MayBeOfAnyFormatThatFreeTypeOpens) {
    Type1Font font;
    font.glyphs = {{"A", 65, makeBoxGlyph(600, 0, 0, 500, 700)}};
    EXPECT_EQ(findReason(font.build()), nothing);
}

TEST(ServableFonts, AreOpenedByFreeType) {
    for (const Bytes& bytes :
         {Bytes{}, Bytes{'n', 'o', 'n', 'e'}, Bytes(FontBuilder().omitTable("head").build())}) {
        const auto expected = getErrorText<FreeTypeException>([&] {
            const auto library = createFreeTypeLibrary();
            createFontFace(library, std::make_shared<const Bytes>(bytes));
        });
        EXPECT_THAT(expected, HasSubstr("FT_Open_Face"));
        EXPECT_EQ(findReason(bytes), expected);
    }
}

TEST(ServableFonts, AreCheckedByTheFirstFaceOfACollection) {
    const FontBuilder mute;
    const FontBuilder sound = FontBuilder().addCharMap(CharMapKind::Unicode);
    EXPECT_EQ(findReason(buildCollection({sound, mute})), nothing);
    EXPECT_EQ(findReason(buildCollection({mute, sound})), "it has no charmap");
}

TEST(ServableFonts, AreNotKeptAlive) {
    const auto bytes = std::make_shared<const Bytes>(FontBuilder().addCharMap(CharMapKind::Unicode).build());
    EXPECT_EQ(findReasonNotToServe(bytes), nothing);
    EXPECT_EQ(bytes.use_count(), 1);
}

TEST(ServableFontsDeathTest, AssertOnNull) {
    const std::shared_ptr<const Bytes> none;
    EXPECT_DEATH(findReasonNotToServe(none), "assertion failed");
}

} // namespace Vell::Testing
