// The protection against boundless composites belongs to one face and ends with it.

#include <support/FontBuilder.h>
#include <support/OpenedFont.h>

#include <FontLoaders/Public/CompositeGlyphs.h>

#include <gtest/gtest.h>

namespace Vell::FontLoaders {
namespace {

using Testing::Bytes;
using Testing::FontBuilder;
using Testing::OpenedFont;

constexpr unsigned int circular = 2;

/// Glyph 1 is a box. Glyph 2 contains it and, on request, itself. The auto-hinter measures glyph 2.
Bytes makeFont(bool isCircular) {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    font.addGlyph({500, {}, {}, {{1}, {isCircular ? circular : 1}}});
    return font.map('o', circular).build();
}

FTFacePtr open(const FTLibraryPtr& library, bool isCircular) {
    return createFontFace(library, std::make_shared<const Bytes>(makeFont(isCircular)));
}

} // namespace

TEST(GlyfReaderLifetime, BelongsToOneFaceOfALibrary) {
    const FTLibraryPtr library = createFreeTypeLibrary();
    const FTFacePtr sound = open(library, false);
    const FTFacePtr hostile = open(library, true);
    {
        const FTFacePtr another = open(library, true);
        EXPECT_FALSE(isBoundedGlyph(another.get(), circular));
    }
    EXPECT_TRUE(isBoundedGlyph(sound.get(), circular));
    EXPECT_TRUE(hasBoundedGlyphs(sound.get()));
    EXPECT_FALSE(isBoundedGlyph(hostile.get(), circular));
    EXPECT_FALSE(hasBoundedGlyphs(hostile.get()));
}

TEST(GlyfReaderLifetime, EndsWithTheLastReferenceToTheFace) {
    OpenedFont font(makeFont(true));
    const FT_Face face = font.get();
    FT_Reference_Face(face);
    font.face.reset();
    EXPECT_FALSE(isBoundedGlyph(face, circular));
    FT_Done_Face(face);
}

TEST(GlyfReaderLifetime, DoesNotExtendToAnotherFaceAtTheSameAddress) {
    const Bytes file = makeFont(true);
    const FTLibraryPtr library = createFreeTypeLibrary();
    for (int i = 0; i < 10; ++i) {
        EXPECT_FALSE(isBoundedGlyph(open(library, true).get(), circular));
        FT_Face other = nullptr;
        ASSERT_EQ(
            FT_New_Memory_Face(library.get(), file.data(), static_cast<FT_Long>(file.size()), 0, &other), 0);
        EXPECT_TRUE(isBoundedGlyph(other, circular)) << "the client opened it, so nothing is known about it";
        FT_Done_Face(other);
    }
}

} // namespace Vell::FontLoaders
