#include "LoaderFonts.h"

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

FontBytes share(Bytes bytes) {
    return std::make_shared<const Bytes>(std::move(bytes));
}

std::string readFamily(const FontBytes& file) {
    const FTLibraryPtr library = createFreeTypeLibrary();
    return createFontFace(library, file)->family_name;
}

} // namespace

TEST(FontCollections, GiveEachFaceAsAFileOfItsOwn) {
    const FontBytes file = share(buildCollection({makeBlankFont("Alpha"), makeBlankFont("Beta", 700)}));
    EXPECT_EQ(readFamily(extractFontFace(file, 0)), "Alpha");
    EXPECT_EQ(readFamily(extractFontFace(file, 1)), "Beta");
    EXPECT_THROW(extractFontFace(file, 2), FontLoaderException);
}

TEST(FontCollections, LeaveAFileOfOneFaceAsItIs) {
    const FontBytes file = share(makeBlankFont("Alpha").build());
    EXPECT_EQ(extractFontFace(file, 0), file);
    EXPECT_THROW(extractFontFace(file, 1), FontLoaderException);
    const FontBytes noFont = share({1, 2, 3});
    EXPECT_EQ(extractFontFace(noFont, 0), noFont);
    EXPECT_THROW(extractFontFace(noFont, 1), FontLoaderException);
}

} // namespace Vell::Testing
