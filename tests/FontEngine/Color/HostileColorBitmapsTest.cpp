// Fonts whose bitmaps are broken or demand too much.

#include <FontEngine/Color/ColorEngine.h>

#include <support/CompoundPictures.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace Vell::FontEngine {
namespace {

using Testing::addPngChunk;
using Testing::buildMislabelledPng;
using Testing::Bytes;
using Testing::GlyphPicture;
using Testing::makeGlyphPicture;
using Testing::makeMixedPicture;
using Testing::PictureStrike;

GlyphPicture makePicture(Bytes file) {
    GlyphPicture picture = makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(8, 8));
    picture.file = std::move(file);
    return picture;
}

/// The fonts of both formats.
std::vector<Bytes> makeFonts(const std::vector<PictureStrike>& strikes) {
    return {makeSbixFont(strikes).build(), makeCbdtFont(strikes).build()};
}

void expectAbsentAndCached(const Bytes& font, float size) {
    const ColorEngine engine(font);
    EXPECT_EQ(engine.getImage(TestGlyph::a, size), nullptr);
    EXPECT_EQ(engine.getImage(TestGlyph::a, size), nullptr);
    const CacheFigures figures = engine.getColors().getFigures();
    EXPECT_EQ(figures.entries, 1U);
    EXPECT_EQ(figures.hits, 1U);
}

TEST(HostileColorBitmaps, OfBrokenFilesAreAbsent) {
    const Bytes sound = makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(8, 8)).file;
    std::vector<Bytes> broken = {{}, {0x89, 'P', 'N', 'G'}, Bytes(200, 0), Bytes(200, 0xFF)};
    for (const std::size_t at : {1U, 12U, 20U, 45U, 60U}) { // signature, header, its checksum, pixels
        Bytes file = sound;
        file[at] = static_cast<unsigned char>(~file[at]);
        broken.push_back(file);
    }
    for (const std::size_t count : {8U, 20U, 33U, 60U}) {
        broken.emplace_back(sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(count));
    }
    for (std::size_t i = 0; i != broken.size(); ++i) {
        for (const Bytes& font : makeFonts({{8, {makePicture(broken[i])}}})) {
            SCOPED_TRACE(i);
            expectAbsentAndCached(font, 8.0F);
            expectAbsentAndCached(font, 5.0F);
        }
    }
}

TEST(HostileColorBitmaps, OfTooManyPixelsAreNotDecoded) {
    const auto start = std::chrono::steady_clock::now();
    for (const unsigned int side : {4097U, 32767U, 60000U, 0x7FFFFFFFU}) {
        const Bytes file = buildMislabelledPng(makeMixedPicture(8, 8), side, side);
        for (const Bytes& font : makeFonts({{8, {makePicture(file)}}})) {
            expectAbsentAndCached(font, 8.0F);
        }
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

// The PNG library would unpack each text to a thousand times its length, and keep it.
TEST(HostileColorBitmaps, WithLongTextsAreNotUnpacked) {
    const Bytes sound = makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(8, 8)).file;
    for (const char* const type : {"zTXt", "iTXt", "iCCP", "tEXt"}) {
        for (const Bytes& font : makeFonts({{8, {makePicture(addPngChunk(sound, type, Bytes(70000, 1)))}}})) {
            expectAbsentAndCached(font, 8.0F);
        }
    }
    Bytes many = sound;
    for (int i = 0; i != 70; ++i) {
        many = addPngChunk(many, "zTXt", Bytes(1000, 1));
    }
    for (const Bytes& font : makeFonts({{8, {makePicture(many)}}})) {
        expectAbsentAndCached(font, 8.0F);
    }
}

// The PNG library would unpack all of it to find its end.
TEST(HostileColorBitmaps, WithFarTooLongPixelDataAreNotUnpacked) {
    constexpr std::size_t headerBytes = 33;
    Bytes file = makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(8, 8)).file;
    const Bytes padding = addPngChunk(Bytes(headerBytes), "IDAT", Bytes(70000, 1));
    constexpr std::ptrdiff_t trailerBytes = 12;
    file.insert(file.end() - trailerBytes, padding.begin() + headerBytes, padding.end());
    for (const Bytes& font : makeFonts({{8, {makePicture(file)}}})) {
        expectAbsentAndCached(font, 8.0F);
    }
}

TEST(HostileColorBitmaps, ThatConsistOfTooManyOthersAreAbsent) {
    constexpr unsigned int levels = 10; // each with two parts
    std::vector<Testing::PictureParts> compounds;
    for (unsigned int level = 1; level <= levels; ++level) {
        compounds.push_back({level + 1, level + 1});
    }
    const auto last = makeGlyphPicture(levels + 1, 1, 8, makeMixedPicture(8, 8));
    const Testing::CbdtTables tables = Testing::buildCompoundCbdt(8, compounds, last);
    Testing::FontBuilder font = makeTestFont();
    font.addGlyphs(levels, {});
    font.omitTable("glyf").omitTable("loca").setTable("CBLC", tables.cblc).setTable("CBDT", tables.cbdt);
    expectAbsentAndCached(font.build(), 8.0F);
    EXPECT_NE(ColorEngine(font.build()).getImage(levels, 8.0F), nullptr) << "that of two parts";
}

TEST(HostileColorBitmaps, WhoseIndexRefersToItselfAreAbsent) {
    Testing::CbdtTables tables = Testing::buildCbdt({{8, {makePicture({1, 2, 3})}}});
    for (std::size_t at = 0; at != 4; ++at) {
        tables.cblc[56 + 4 + at] = 0; // the range describes itself
    }
    expectAbsentAndCached(makeCbdtFont(makeTwoStrikes()).setTable("CBLC", tables.cblc).build(), 8.0F);
}

TEST(HostileColorBitmaps, OfAnotherSizeThanTheTableSaysAreAbsent) {
    const Bytes file = makeGlyphPicture(TestGlyph::a, 1, 8, makeMixedPicture(9, 9)).file;
    expectAbsentAndCached(makeCbdtFont({{8, {makePicture(file)}}}).build(), 8.0F);
}

TEST(HostileColorBitmaps, AreNotEnlargedWithoutBounds) {
    const std::vector<PictureStrike> strikes = {
        {1, {makeGlyphPicture(TestGlyph::a, 0, 200, makeMixedPicture(200, 200))}}};
    for (const Bytes& font : makeFonts(strikes)) {
        expectAbsentAndCached(font, 50.0F); // 10,000 pixels in each direction
    }
}

TEST(HostileColorBitmaps, OfAbsurdStrikesDoNoHarm) {
    const auto picture = makeGlyphPicture(TestGlyph::a, 30000, -30000, makeMixedPicture(8, 8));
    const Bytes zero = makeSbixFont({{0, {picture}}, {65535, {picture}}}).build();
    const ColorEngine engine(zero);
    for (const float size : {0.001F, 8.0F, 1000.0F, 65535.0F, 1e9F}) {
        engine.getImage(TestGlyph::a, size);
    }
    EXPECT_EQ(engine.getColors().getFigures().entries, 5U);
}

TEST(HostileColorBitmaps, OfThousandsOfStrikesAreSearchedOnlyNearby) {
    std::vector<PictureStrike> strikes;
    for (unsigned int ppem = 1; ppem != 3000; ++ppem) {
        strikes.push_back({ppem, {}});
    }
    strikes.push_back({3000, {makeGlyphPicture(TestGlyph::a, 0, 8, makeMixedPicture(8, 8))}});
    const ColorEngine engine(makeSbixFont(strikes).build());
    EXPECT_EQ(engine.getImage(TestGlyph::a, 100.0F), nullptr);
    EXPECT_NE(engine.getImage(TestGlyph::a, 2990.0F), nullptr);
}

TEST(HostileColorBitmaps, ThatDuplicateEachOtherAreAbsent) {
    GlyphPicture first = makePicture({0, TestGlyph::x});
    GlyphPicture second = makePicture({0, TestGlyph::a});
    first.type = second.type = "dupe";
    second.glyph = TestGlyph::x;
    expectAbsentAndCached(makeSbixFont({{8, {first, second}}}).build(), 8.0F);
}

TEST(HostileColorBitmaps, OfTruncatedTablesAreAbsentOrWhole) {
    const std::vector<PictureStrike> strikes = makeTwoStrikes();
    const Bytes sbix = Testing::buildSbix(strikes, 5);
    const Testing::CbdtTables tables = Testing::buildCbdt(strikes);
    const auto cut = [](const Bytes& table, std::size_t count) {
        return Bytes(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(count));
    };
    int refused = 0;
    const auto use = [&](const Testing::FontBuilder& font) {
        const ColorEngine engine(font.build());
        try {
            engine.getColors().hasColors(*engine.getFace());
        } catch (const FontLoaders::FreeTypeException&) {
            ++refused; // has neither outlines nor bitmaps
            return;
        }
        for (const float size : {8.0F, 20.0F, 11.0F}) {
            engine.getImage(TestGlyph::a, size);
            engine.getImage(TestGlyph::x, size);
        }
    };
    for (std::size_t count = 0; count < 200; count += 3) {
        use(makeSbixFont(strikes).setTable("sbix", cut(sbix, count)));
        use(makeCbdtFont(strikes).setTable("CBDT", cut(tables.cbdt, count)));
        use(makeCbdtFont(strikes).setTable("CBLC", cut(tables.cblc, std::min(count, tables.cblc.size()))));
    }
    EXPECT_LT(refused, 100);
}

} // namespace
} // namespace Vell::FontEngine
