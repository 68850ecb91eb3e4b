// The loader skips faces without a usable charmap, although fontconfig lists them like any other.

#include "LoaderFonts.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using LoaderPtr = NNPtr<FontLoader>;

constexpr std::uint32_t greekAlpha = 0x3B1;

/// Makes a font without any charmap.
FontBuilder makeFontWithoutCharMap(const std::string& family, bool bold = false, bool italic = false) {
    FontBuilder font(family);
    font.setStyle(bold, italic);
    return font;
}

/// Makes a font with so many Greek letters.
FontBuilder makeFont(const std::string& family, bool bold = false, bool italic = false,
                     unsigned int letters = 1) {
    FontBuilder font = makeFontWithoutCharMap(family, bold, italic);
    const unsigned int glyph = font.addGlyph(makeBoxGlyph(600, 0, 0, 500, 700));
    for (std::uint32_t code = greekAlpha; code < greekAlpha + letters; ++code) {
        font.map(code, glyph);
    }
    return font;
}

/// Makes a font with a weight that is nearer to regular than bold is.
FontBuilder makeLight(FontBuilder font) {
    return font.setWeight(300, false);
}

std::string bindAsSame(const std::string& from, const std::string& to) {
    return "<match target=\"pattern\"><test name=\"family\"><string>" + from +
           "</string></test><edit name=\"family\" mode=\"append\" binding=\"same\"><string>" + to +
           "</string></edit></match>";
}

} // namespace

class FontCharmaps : public ::testing::Test {
protected:
    void install(const std::string& name, const FontBuilder& font) const {
        _sandbox.write(name, font.build());
    }

    /// Makes a loader that knows the fonts installed now.
    LoaderPtr makeLoader(const std::string& defaultFamily = "Default") const {
        const LoaderPtr loader = createPlatformDefaultFontLoader(defaultFamily);
        load(loader, "Unknown");
        return loader;
    }

    /// Returns the file that the bytes come from, or "null" for none.
    std::string nameFile(const LoaderPtr& loader, const std::shared_ptr<const Bytes>& bytes) const {
        const auto place = findFontFile(*loader, bytes);
        if (!place) {
            return bytes ? "built in" : "null";
        }
        const std::string name = std::filesystem::path(place->file).filename().string();
        return place->index == 0 ? name : name + ":" + std::to_string(place->index);
    }
    std::string find(const LoaderPtr& loader, const std::string& family, bool bold = false,
                     bool italic = false) const {
        return nameFile(loader, load(loader, family, bold, italic));
    }
    std::string findDefault(const LoaderPtr& loader, bool bold = false, bool italic = false) const {
        return nameFile(loader, loader->loadDefaultFont(bold, italic));
    }
    static std::string findGreek(const LoaderPtr& loader) {
        return loader->getFamilyNameForRange(UnicodeRangeMap::find(greekAlpha));
    }

    const FontSandbox _sandbox{bindAsSame("Old", "New") +
                               "<alias><family>Default</family><prefer><family>First</family>"
                               "<family>Second</family></prefer></alias>"
                               "<alias><family>serif</family><prefer><family>First</family>"
                               "<family>Second</family></prefer></alias>"};
};

TEST_F(FontCharmaps, AFamilyWithoutACharmapIsNotInstalled) {
    install("mute.ttf", makeFontWithoutCharMap("Mute"));
    install("other.ttf", makeFont("Other"));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(find(loader, "Mute"), "null");
    EXPECT_EQ(find(loader, "Mute", true), "null");
    EXPECT_EQ(find(loader, "Mute"), "null");
    EXPECT_EQ(find(loader, "Other"), "other.ttf");
}

TEST_F(FontCharmaps, TheNextBestFaceReplacesAFaceWithoutACharmap) {
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    install("b.ttf", makeFontWithoutCharMap("Alpha"));
    install("c.ttf", makeLight(makeFont("Alpha")));
    EXPECT_EQ(find(makeLoader(), "Alpha"), "c.ttf");
}

TEST_F(FontCharmaps, AStyleWhoseOnlyFaceHasNoCharmapIsMissing) {
    install("a.ttf", makeFont("Alpha"));
    install("b.ttf", makeFontWithoutCharMap("Alpha", true));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(find(loader, "Alpha", true), "null");
    EXPECT_EQ(find(loader, "Alpha"), "a.ttf");
}

TEST_F(FontCharmaps, EachFaceOfACollectionIsCheckedByItself) {
    _sandbox.write("a.ttc", buildCollection({makeFontWithoutCharMap("Mute"), makeFont("Alpha"),
                                             makeFontWithoutCharMap("Beta")}));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(find(loader, "Mute"), "null");
    EXPECT_EQ(find(loader, "Alpha"), "a.ttc:1");
    EXPECT_EQ(find(loader, "Beta"), "null");
}

TEST_F(FontCharmaps, AnEmptyCharmapIsUsable) {
    install("a.ttf", makeFontWithoutCharMap("Alpha").addCharMap(CharMapKind::Unicode));
    install("b.ttf", makeFontWithoutCharMap("Beta").addCharMap(CharMapKind::MacRoman));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(find(loader, "Alpha"), "a.ttf");
    EXPECT_EQ(find(loader, "Beta"), "b.ttf");
}

TEST_F(FontCharmaps, AFamilyWithoutACharmapIsServedByItsSameBinding) {
    install("a.ttf", makeFontWithoutCharMap("Old"));
    install("b.ttf", makeFont("New"));
    install("c.ttf", makeFont("New", true));
    EXPECT_EQ(find(makeLoader(), "Old"), "b.ttf");
    EXPECT_EQ(find(makeLoader(), "Old", true), "c.ttf") << "the first request decides, whichever it is";
}

TEST_F(FontCharmaps, AFamilyWithACharmapIsNotReplacedIfItLacksAStyle) {
    install("a.ttf", makeFontWithoutCharMap("Old"));
    install("b.ttf", makeLight(makeFont("Old")));
    install("c.ttf", makeFont("New", true));
    EXPECT_EQ(find(makeLoader(), "Old", true), "null");
}

TEST_F(FontCharmaps, AGenericNameFallsBackToTheNextFamily) {
    install("a.ttf", makeFontWithoutCharMap("First"));
    install("b.ttf", makeFont("Second"));
    install("c.ttf", makeFont("Alpha"));
    EXPECT_EQ(find(makeLoader(), "serif"), "b.ttf");
}

TEST_F(FontCharmaps, TheDefaultFontFallsBackToTheNearestStyleOfItsFamily) {
    install("a.ttf", makeFontWithoutCharMap("Default"));
    install("b.ttf", makeFont("Default", true));
    install("c.ttf", makeFont("First"));
    EXPECT_EQ(findDefault(makeLoader()), "b.ttf");
}

TEST_F(FontCharmaps, TheDefaultFontFallsBackToTheNextFamily) {
    install("a.ttf", makeFontWithoutCharMap("Default"));
    install("b.ttf", makeFontWithoutCharMap("First"));
    install("c.ttf", makeFont("Second"));
    install("d.ttf", makeFont("Second", true));
    install("e.ttf", makeFont("Alpha"));
    EXPECT_EQ(findDefault(makeLoader()), "c.ttf");
    EXPECT_EQ(findDefault(makeLoader(), true), "d.ttf");
    EXPECT_EQ(findDefault(makeLoader(), false, true), "null");
}

TEST_F(FontCharmaps, TheDefaultFontIsBuiltInIfNoFontHasACharmap) {
    install("a.ttf", makeFontWithoutCharMap("Default"));
    install("b.ttf", makeFontWithoutCharMap("First", true));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(findDefault(loader, true), "null");
    EXPECT_EQ(findDefault(loader), FONT_IS_EMBEDDED != 0 ? "built in" : "null");
}

TEST_F(FontCharmaps, ARangeFallsBackToTheNextFamily) {
    install("a.ttf", makeFont("Alpha", false, false, 3));
    install("b.ttf", makeFont("Beta", false, false, 2));
    install("c.ttf", makeFont("Gamma"));
    const LoaderPtr loader = makeLoader();
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    install("b.ttf", makeFontWithoutCharMap("Beta"));
    EXPECT_EQ(findGreek(loader), "Gamma");
    EXPECT_EQ(find(loader, "Gamma"), "c.ttf");
}

TEST_F(FontCharmaps, ARangeFallsBackToTheNextFaceOfTheFamily) {
    install("a.ttf", makeFont("Alpha", false, false, 3));
    install("b.ttf", makeLight(makeFont("Alpha", false, false, 2)));
    install("c.ttf", makeFont("Beta"));
    const LoaderPtr loader = makeLoader();
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    EXPECT_EQ(findGreek(loader), "Alpha");
    EXPECT_EQ(find(loader, "Alpha"), "b.ttf");
}

TEST_F(FontCharmaps, ARangeWhoseOnlyFontHasNoCharmapHasNoFamily) {
    install("a.ttf", makeFont("Alpha"));
    const LoaderPtr loader = makeLoader();
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    EXPECT_EQ(findGreek(loader), "");
    EXPECT_EQ(find(loader, "Alpha"), "null");
}

TEST_F(FontCharmaps, ARangeForgetsAFamilyThatLostItsCharmap) {
    install("a.ttf", makeFont("Alpha", false, false, 2));
    install("b.ttf", makeFont("Beta"));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(findGreek(loader), "Alpha");
    EXPECT_EQ(find(loader, "Alpha"), "a.ttf");
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    EXPECT_EQ(find(loader, "Alpha"), "null");
    EXPECT_EQ(findGreek(loader), "Beta");
}

TEST_F(FontCharmaps, FontconfigsListIsNotTrusted) {
    install("a.ttf", makeFont("Alpha"));
    const LoaderPtr loader = makeLoader();
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    EXPECT_EQ(find(loader, "Alpha"), "null");
}

TEST_F(FontCharmaps, AreCheckedInEveryFileThatIsReadAgain) {
    install("a.ttf", makeFont("Alpha"));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(find(loader, "Alpha"), "a.ttf");
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    EXPECT_EQ(find(loader, "Alpha"), "null");
}

TEST_F(FontCharmaps, AreNotCheckedAgainInBytesThatAreInUse) {
    install("a.ttf", makeFont("Alpha"));
    const LoaderPtr loader = makeLoader();
    const auto bytes = load(loader, "Alpha");
    install("a.ttf", makeFontWithoutCharMap("Alpha"));
    EXPECT_EQ(load(loader, "Alpha").get(), bytes.get());
}

TEST_F(FontCharmaps, ACharmapThatCannotBeSelectedDoesNotCount) {
    // One subtable, of format 14 (variation sequences) for Macintosh Roman.
    install("a.ttf", makeFontWithoutCharMap("Alpha").setTable("cmap", {0, 0,  0, 1, 0, 1,  0, 0, 0, 0,
                                                                       0, 12, // the subtable's place
                                                                       0, 14, 0, 0, 0, 10, 0, 0, 0, 0}));
    EXPECT_EQ(find(makeLoader(), "Alpha"), "null");
}

TEST_F(FontCharmaps, AFileThatFreeTypeDoesNotOpenIsServed) {
    install("a.ttf", makeFont("Alpha"));
    const LoaderPtr loader = makeLoader();
    _sandbox.write("a.ttf", {'n', 'o', ' ', 'f', 'o', 'n', 't'});
    const auto bytes = load(loader, "Alpha");
    ASSERT_NE(bytes, nullptr);
    const auto library = createFreeTypeLibrary();
    EXPECT_THROW(createFontFace(library, bytes), FreeTypeException);
}

TEST_F(FontCharmaps, ADeletedFileCountsAsInstalledUntilItIsRequested) {
    install("a.ttf", makeFont("Old", false, false, 2));
    install("b.ttf", makeFont("New", true));
    const LoaderPtr loader = makeLoader();
    _sandbox.remove("a.ttf");
    EXPECT_EQ(find(loader, "Old", true), "null");
    EXPECT_EQ(findGreek(loader), "Old");
    EXPECT_THROW(load(loader, "Old"), FontLoaderException);
}

TEST_F(FontCharmaps, BytesReadForTheCheckAreKeptUntilAFontIsLoaded) {
    install("a.ttf", makeFont("Alpha"));
    const LoaderPtr loader = makeLoader();
    EXPECT_EQ(findGreek(loader), "Alpha");
    _sandbox.remove("a.ttf");
    std::shared_ptr<const Bytes> bytes = load(loader, "Alpha");
    EXPECT_EQ(nameFile(loader, bytes), "a.ttf");
    bytes = nullptr;
    EXPECT_THROW(load(loader, "Alpha"), FontLoaderException);
}

} // namespace Vell::Testing
