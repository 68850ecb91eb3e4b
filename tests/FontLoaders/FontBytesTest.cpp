#include "LoaderFonts.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Property;
using ::testing::Throws;

/// Opens the bytes and returns their family.
std::string getFamily(const NNPtr<const Bytes>& bytes) {
    const auto library = createFreeTypeLibrary();
    return createFontFace(library, bytes)->family_name;
}

auto tellsOf(const std::string& file, const std::string& reason) {
    return Throws<FontLoaderException>(
        Property(&FontLoaderException::what, AllOf(HasSubstr(file), HasSubstr(reason))));
}

} // namespace

TEST(FontBytes, DescriptionsOfOneFaceShareOneVector) {
    const FontSandbox sandbox;
    FontBuilder font = makeBlankFont("Alpha");
    font.addName({0x411, 1, "\u5B57"});
    sandbox.write("a.ttf", font.build());
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    const auto bytes = load(loader, "Alpha");
    ASSERT_NE(bytes, nullptr);
    EXPECT_EQ(load(loader, "ALPHA").get(), bytes.get());
    EXPECT_EQ(load(loader, "\u5B57").get(), bytes.get());
    EXPECT_EQ(load(loader, "sans-serif").get(), bytes.get());
    EXPECT_EQ(loader->loadDefaultFont(false, false).get(), bytes.get());
}

TEST(FontBytes, AFileIsReadOnceWhileItsBytesAreInUse) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    const auto bytes = load(loader, "Alpha");
    sandbox.remove("a.ttf");
    EXPECT_EQ(load(loader, "Alpha").get(), bytes.get());
}

TEST(FontBytes, AFileIsReadAgainAfterItsBytesWereReleased) {
    const FontSandbox sandbox;
    const Bytes first = makeBlankFont("Alpha").build();
    sandbox.write("a.ttf", first);
    const auto loader = createPlatformDefaultFontLoader("");
    EXPECT_EQ(*load(loader, "Alpha"), first);
    const Bytes second = makeBlankFont("Alpha", 300).build();
    sandbox.write("a.ttf", second);
    EXPECT_EQ(*load(loader, "Alpha"), second);
}

TEST(FontBytes, TheLoaderKeepsNothingAlive) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    const std::weak_ptr<const Bytes> watch = load(loader, "Alpha");
    EXPECT_TRUE(watch.expired());
}

TEST(FontBytes, BytesOutliveTheLoader) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto bytes = load(createPlatformDefaultFontLoader(""), "Alpha");
    EXPECT_EQ(getFamily(bytes), "Alpha");
}

TEST(FontBytes, EachFaceOfACollectionHasItsOwnBytes) {
    const FontSandbox sandbox;
    sandbox.write("a.ttc", buildCollection({makeBlankFont("Alpha"), makeBlankFont("Beta")}));
    const auto loader = createPlatformDefaultFontLoader("");
    for (const char* name : {"Alpha", "Beta"}) {
        const auto bytes = load(loader, name);
        ASSERT_NE(bytes, nullptr) << name;
        EXPECT_EQ(getFamily(bytes), name);
        const auto library = createFreeTypeLibrary();
        EXPECT_EQ(createFontFace(library, bytes)->num_faces, 1);
    }
}

TEST(FontBytes, RequestsForAFaceOfACollectionShareOneVector) {
    const FontSandbox sandbox;
    sandbox.write("a.ttc", buildCollection({makeBlankFont("Alpha"), makeBlankFont("Beta")}));
    const auto loader = createPlatformDefaultFontLoader("");
    const auto alpha = load(loader, "Alpha");
    const auto beta = load(loader, "Beta");
    EXPECT_EQ(load(loader, "ALPHA").get(), alpha.get());
    EXPECT_NE(alpha.get(), beta.get());
}

TEST(FontBytes, ACollectionIsReadOnceForAllItsFaces) {
    const FontSandbox sandbox;
    sandbox.write("a.ttc", buildCollection({makeBlankFont("Alpha"), makeBlankFont("Beta")}));
    const auto loader = createPlatformDefaultFontLoader("");
    const auto alpha = load(loader, "Alpha");
    sandbox.remove("a.ttc");
    const auto beta = load(loader, "Beta");
    ASSERT_NE(beta, nullptr);
    EXPECT_EQ(getFamily(beta), "Beta");
}

TEST(FontBytes, AFaceOfALargeCollectionDrawsItsOwnGlyphs) {
    const FontSandbox sandbox;
    sandbox.link(std::string(notoCjk) + "NotoSansCJK-Regular.ttc");
    const auto loader = createPlatformDefaultFontLoader("");
    const auto bytes = load(loader, "Noto Sans CJK KR");
    ASSERT_NE(bytes, nullptr);
    const auto library = createFreeTypeLibrary();
    const auto face = createFontFace(library, bytes);
    EXPECT_STREQ(face->family_name, "Noto Sans CJK KR");
    const FT_UInt glyph = FT_Get_Char_Index(face.get(), 0x4E2D);
    ASSERT_NE(glyph, 0U);
    EXPECT_EQ(FT_Load_Glyph(face.get(), glyph, FT_LOAD_NO_SCALE), 0);
    EXPECT_GT(face->glyph->outline.n_points, 0);
}

TEST(FontBytes, TheErrorForADeletedFileNamesItAndTheReason) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    ASSERT_NE(load(loader, "Alpha"), nullptr);
    sandbox.remove("a.ttf");
    const auto file = sandbox.getPath("a.ttf");
    EXPECT_THAT([&] { load(loader, "Alpha"); }, tellsOf(file, "No such file or directory"));
    EXPECT_THAT([&] { loader->loadDefaultFont(false, false); }, tellsOf(file, "No such file or directory"));
}

TEST(FontBytes, TheErrorForAnUnreadableFileNamesItAndTheReason) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    ASSERT_NE(load(loader, "Alpha"), nullptr);
    const auto file = sandbox.getPath("a.ttf");
    sandbox.remove("a.ttf");
    ASSERT_EQ(mkdir(file.c_str(), 0700), 0);
    EXPECT_THAT([&] { load(loader, "Alpha"); }, tellsOf(file, "Is a directory"));
}

TEST(FontBytes, TheErrorForAnEmptiedFileNamesItAndTheReason) {
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    const auto loader = createPlatformDefaultFontLoader("");
    ASSERT_NE(load(loader, "Alpha"), nullptr);
    sandbox.write("a.ttf", {});
    EXPECT_THAT([&] { load(loader, "Alpha"); }, tellsOf(sandbox.getPath("a.ttf"), "the file is empty"));
}

TEST(FontBytes, TheErrorForACollectionWithoutTheFaceNamesTheFile) {
    const FontSandbox sandbox;
    const FontBuilder alpha = makeBlankFont("Alpha");
    sandbox.write("a.ttc", buildCollection({alpha, makeBlankFont("Beta")}));
    const auto loader = createPlatformDefaultFontLoader("");
    ASSERT_NE(load(loader, "Beta"), nullptr);
    sandbox.write("a.ttc", buildCollection({alpha}));
    EXPECT_THAT([&] { load(loader, "Beta"); },
                tellsOf(sandbox.getPath("a.ttc"), "there is no face 1 among 1"));
}

TEST(FontBytes, AFileThatComesBackCanBeLoaded) {
    const FontSandbox sandbox;
    const Bytes alpha = makeBlankFont("Alpha").build();
    sandbox.write("a.ttf", alpha);
    const auto loader = createPlatformDefaultFontLoader("");
    ASSERT_NE(load(loader, "Alpha"), nullptr);
    sandbox.remove("a.ttf");
    EXPECT_THROW(load(loader, "Alpha"), FontLoaderException);
    sandbox.write("a.ttf", alpha);
    EXPECT_EQ(*load(loader, "Alpha"), alpha);
}

TEST(FontBytes, MakingALoaderReadsNothing) {
    const auto loader = createPlatformDefaultFontLoader("Alpha");
    // The configuration knows the font only from now on.
    const FontSandbox sandbox;
    sandbox.write("a.ttf", makeBlankFont("Alpha").build());
    EXPECT_NE(load(loader, "Alpha"), nullptr);
}

TEST(FontBytes, EachLoaderHasItsOwnListOfInstalledFonts) {
    const FontSandbox first;
    first.write("a.ttf", makeBlankFont("Alpha").build());
    const auto early = createPlatformDefaultFontLoader("");
    ASSERT_NE(load(early, "Alpha"), nullptr);
    const FontSandbox second;
    second.write("b.ttf", makeBlankFont("Beta").build());
    const auto late = createPlatformDefaultFontLoader("");
    EXPECT_EQ(load(late, "Alpha"), nullptr);
    EXPECT_NE(load(late, "Beta"), nullptr);
    EXPECT_EQ(load(early, "Beta"), nullptr);
    EXPECT_NE(load(early, "Alpha"), nullptr);
}

} // namespace Vell::Testing
