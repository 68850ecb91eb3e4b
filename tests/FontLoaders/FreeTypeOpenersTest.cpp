#include "LoaderFonts.h"

#include <gmock/gmock.h>

#include FT_GLYPH_H
#include <algorithm>

#include <thread>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Property;
using ::testing::Throws;

auto tells(const std::string& text, int code) {
    return Throws<FreeTypeException>(Property(
        &FreeTypeException::what, AllOf(HasSubstr(text), HasSubstr("error " + std::to_string(code)))));
}

NNPtr<const Bytes> readSans() {
    return makeNNPtr<const Bytes>(readFile(std::string(dejaVu) + "DejaVuSans.ttf"));
}

} // namespace

TEST(FreeTypeOpeners, OnlyZeroIsSuccess) {
    EXPECT_TRUE(isFTSucceeded(0));
    EXPECT_FALSE(isFTSucceeded(1));
    EXPECT_FALSE(isFTSucceeded(-1));
}

TEST(FreeTypeOpeners, OpenTheFirstFace) {
    const auto library = createFreeTypeLibrary();
    const auto face = createFontFace(library, makeNNPtr<const Bytes>(makeBlankFont("Alpha").build()));
    EXPECT_STREQ(face->family_name, "Alpha");
    EXPECT_EQ(face->face_index, 0);
    EXPECT_EQ(face->units_per_EM, 1000);
}

TEST(FreeTypeOpeners, ReportBytesThatAreNotAFontWithFreeTypesTextAndCode) {
    const auto library = createFreeTypeLibrary();
    const auto garbage = makeNNPtr<const Bytes>(Bytes(1000, 'x'));
    EXPECT_THAT([&] { createFontFace(library, garbage); },
                tells("unknown file format", FT_Err_Unknown_File_Format));
}

TEST(FreeTypeOpeners, ReportADamagedFontWithFreeTypesTextAndCode) {
    const auto library = createFreeTypeLibrary();
    Bytes damaged = makeBlankFont("Alpha").build();
    const std::string tag = "head";
    const auto head = std::search(damaged.begin(), damaged.end(), tag.begin(), tag.end());
    ASSERT_NE(head, damaged.end());
    *head = 'x';
    EXPECT_THROW(createFontFace(library, makeNNPtr<const Bytes>(damaged)), FreeTypeException);
}

TEST(FreeTypeOpeners, ReportEmptyBytes) {
    const auto library = createFreeTypeLibrary();
    EXPECT_THROW(createFontFace(library, makeNNPtr<const Bytes>()), FreeTypeException);
}

TEST(FreeTypeOpeners, ReportAMissingLibrary) {
    const FTLibraryPtr none(nullptr, [](FT_LibraryRec_*) {});
    EXPECT_THAT([&] { createFontFace(none, readSans()); },
                tells("invalid library handle", FT_Err_Invalid_Library_Handle));
}

TEST(FreeTypeOpeners, KeepTheBytesAliveAsLongAsTheFace) {
    const auto library = createFreeTypeLibrary();
    std::weak_ptr<const Bytes> watch;
    {
        std::shared_ptr<const Bytes> bytes = readSans();
        watch = bytes;
        const auto face = createFontFace(library, bytes);
        bytes.reset();
        EXPECT_FALSE(watch.expired());
        EXPECT_EQ(FT_Load_Glyph(face.get(), FT_Get_Char_Index(face.get(), 'A'), FT_LOAD_NO_SCALE), 0);
        EXPECT_GT(face->glyph->outline.n_points, 0);
    }
    EXPECT_TRUE(watch.expired());
}

TEST(FreeTypeOpeners, ReleaseBytesThatAreNotAFont) {
    const auto library = createFreeTypeLibrary();
    for (const Bytes& content : {Bytes(), Bytes(100, 'x'), Bytes{'t', 't', 'c', 'f'}, Bytes{0, 1, 0, 0}}) {
        const std::shared_ptr<const Bytes> bytes = makeNNPtr<const Bytes>(content);
        EXPECT_THROW(createFontFace(library, bytes), FreeTypeException);
        EXPECT_EQ(bytes.use_count(), 1);
    }
}

TEST(FreeTypeOpeners, LetAGlyphOutliveItsFaceAndTheFirstOwnerOfItsLibrary) {
    FTLibraryPtr last(nullptr, [](FT_LibraryRec_*) {});
    FT_Glyph glyph = nullptr;
    {
        const auto library = createFreeTypeLibrary();
        const auto face = createFontFace(library, readSans());
        ASSERT_EQ(FT_Set_Char_Size(face.get(), 0, 20 * 64, 0, 0), 0);
        ASSERT_EQ(FT_Load_Char(face.get(), 'A', FT_LOAD_DEFAULT), 0);
        ASSERT_EQ(FT_Get_Glyph(face->glyph, &glyph), 0);
        ASSERT_EQ(FT_Glyph_To_Bitmap(&glyph, FT_RENDER_MODE_NORMAL, nullptr, 1), 0);
        last = shareFreeTypeLibrary(library.get());
    }
    EXPECT_GT(reinterpret_cast<FT_BitmapGlyph>(glyph)->bitmap.rows, 0U);
    std::thread([glyph] { FT_Done_Glyph(glyph); }).join();
}

TEST(FreeTypeOpeners, ReportSharingANullLibrary) {
    EXPECT_THAT([] { shareFreeTypeLibrary(nullptr); },
                tells("invalid library handle", FT_Err_Invalid_Library_Handle));
}

} // namespace Vell::Testing
