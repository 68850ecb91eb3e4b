// Bitmaps of fonts without outlines that demand too much of FreeType or of the PNG library behind it.

#include <FontEngine/Color/ColorEngine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/CompoundPictures.h>
#include <support/ErrorText.h>
#include <support/OpenedFont.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

namespace Vell::FontEngine {
namespace {

using FontLoaders::FreeTypeException;
using Testing::addPngChunk;
using Testing::Bytes;
using Testing::CbdtTables;
using Testing::FontBuilder;
using Testing::getErrorText;
using Testing::GlyphPicture;
using Testing::makeGlyphPicture;
using Testing::makeMixedPicture;
using Testing::OpenedFont;
using Testing::PictureParts;
using Testing::PictureStrike;

constexpr float size = 8.0F;

/// What FreeType says about a picture that it cannot decode.
constexpr const char* invalidFormat = "FT_Load_Glyph() failed, error: 3, glyph index: 1 ";

FontBuilder makeFontWithoutOutlines(unsigned int furtherGlyphs = 0) {
    FontBuilder font = makeTestFont();
    font.addGlyphs(furtherGlyphs, {});
    return font.omitTable("glyf").omitTable("loca");
}

Bytes buildFont(const CbdtTables& tables, unsigned int furtherGlyphs = 0) {
    return makeFontWithoutOutlines(furtherGlyphs)
        .setTable("CBLC", tables.cblc)
        .setTable("CBDT", tables.cbdt)
        .build();
}

/// The fonts of all formats.
std::vector<Bytes> buildFonts(const std::vector<PictureStrike>& strikes) {
    const CbdtTables tables = Testing::buildCbdt(strikes);
    std::vector<Bytes> fonts = {
        makeFontWithoutOutlines().setTable("sbix", Testing::buildSbix(strikes, 5)).build()};
    for (const char* const indexTag : {"CBLC", "EBLC", "bloc"}) {
        for (const char* const dataTag : {"CBDT", "EBDT", "bdat"}) {
            fonts.push_back(makeFontWithoutOutlines()
                                .setTable(indexTag, tables.cblc)
                                .setTable(dataTag, tables.cbdt)
                                .build());
        }
    }
    return fonts;
}

GlyphPicture makePicture(unsigned int glyph = TestGlyph::a) {
    return makeGlyphPicture(glyph, 1, 8, makeMixedPicture(8, 8));
}

GlyphPicture makePicture(Bytes file) {
    GlyphPicture picture = makePicture();
    picture.file = std::move(file);
    return picture;
}

std::shared_ptr<const FT_BitmapGlyphRec_> render(const Engine& engine, unsigned long glyph) {
    const KeyFields key = KeyFields().with(&KeyFields::glyph, glyph).with(&KeyFields::size, size);
    return engine.factory->getBitmapGlyph(key.makeBitmap(), engine.getFace(), false);
}

std::string getRenderingError(const Engine& engine, unsigned long glyph = TestGlyph::a) {
    return getErrorText<FreeTypeException>([&] { render(engine, glyph); });
}

Bytes copyPixels(const FT_Bitmap& bitmap) {
    return Bytes(bitmap.buffer, bitmap.buffer + static_cast<std::size_t>(bitmap.pitch) * bitmap.rows);
}

void expectSameAsFreeType(const Bytes& file, unsigned int glyph) {
    const Engine engine(file);
    const auto rendered = render(engine, glyph);
    const OpenedFont font(file);
    ASSERT_EQ(FT_Select_Size(font.get(), 0), FT_Err_Ok);
    ASSERT_EQ(FT_Load_Glyph(font.get(), glyph, FT_LOAD_DEFAULT), FT_Err_Ok);
    EXPECT_EQ(rendered->left, font->glyph->bitmap_left);
    EXPECT_EQ(rendered->top, font->glyph->bitmap_top);
    EXPECT_EQ(copyPixels(rendered->bitmap), copyPixels(font->glyph->bitmap));
    EXPECT_NE(copyPixels(rendered->bitmap), Bytes(8 * 8, 0));
}

/// Glyph 1 has two parts, which have two parts each, and so on.
std::vector<PictureParts> makeNestedParts(unsigned int levels) {
    std::vector<PictureParts> compounds;
    for (unsigned int level = 1; level <= levels; ++level) {
        compounds.push_back({level + 1, level + 1});
    }
    return compounds;
}

} // namespace

TEST(HostilePictures, FailAsBrokenOnesIfTheirTextsAreLong) {
    const Bytes sound = makePicture().file;
    const std::string broken = getRenderingError(Engine(buildFonts({{8, {makePicture({0x89, 'P'})}}})[0]));
    EXPECT_EQ(broken, invalidFormat);
    for (const char* const type : {"zTXt", "iTXt", "iCCP"}) {
        const Bytes file = addPngChunk(sound, type, Bytes(70000, 1));
        for (const Bytes& font : buildFonts({{8, {makePicture(file), makePicture(TestGlyph::x)}}})) {
            const Engine engine(font);
            EXPECT_EQ(getRenderingError(engine), broken);
            EXPECT_EQ(getRenderingError(engine), broken) << "nothing was cached";
            EXPECT_NE(render(engine, TestGlyph::x), nullptr);
        }
    }
}

TEST(HostilePictures, FailIfManyShortTextsAreLongTogether) {
    Bytes many = makePicture().file;
    for (int i = 0; i != 70; ++i) {
        many = addPngChunk(many, "zTXt", Bytes(1000, 1));
    }
    for (const Bytes& font : buildFonts({{8, {makePicture(many)}}})) {
        EXPECT_EQ(getRenderingError(Engine(font)), invalidFormat);
    }
}

// The PNG library would unpack all of it to find its end.
TEST(HostilePictures, FailIfTheirPixelDataIsFarTooLong) {
    constexpr std::size_t headerBytes = 33;
    constexpr std::ptrdiff_t trailerBytes = 12;
    const Bytes chunk = addPngChunk(Bytes(headerBytes), "IDAT", Bytes(1000, 1));
    Bytes padded = makePicture().file;
    for (int i = 0; i != 70; ++i) {
        padded.insert(padded.end() - trailerBytes, chunk.begin() + headerBytes, chunk.end());
    }
    for (const Bytes& font : buildFonts({{8, {makePicture(padded)}}})) {
        EXPECT_EQ(getRenderingError(Engine(font)), invalidFormat);
    }
}

TEST(HostilePictures, FailIfTheyConsistOfTooManyOthers) {
    const auto start = std::chrono::steady_clock::now();
    for (const unsigned int levels : {8U, 18U, 90U}) {
        const Engine engine(
            buildFont(Testing::buildCompoundCbdt(8, makeNestedParts(levels), makePicture(levels + 1)), 90));
        EXPECT_EQ(getRenderingError(engine), invalidFormat);
        EXPECT_NE(render(engine, levels + 1), nullptr);
    }
    const std::vector<PictureParts> flat = {PictureParts(256, 2)};
    EXPECT_EQ(getRenderingError(Engine(buildFont(Testing::buildCompoundCbdt(8, flat, makePicture(2))))),
              invalidFormat);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST(HostilePictures, FailIfTheTextsOfTheirPartsAreLongTogether) {
    GlyphPicture part = makePicture(2);
    part.file = addPngChunk(part.file, "zTXt", Bytes(30000, 1));
    for (const std::size_t count : {1U, 2U}) {
        const Bytes font = buildFont(Testing::buildCompoundCbdt(8, {PictureParts(count, 2)}, part));
        expectSameAsFreeType(font, TestGlyph::a);
    }
    const Bytes font = buildFont(Testing::buildCompoundCbdt(8, {PictureParts(3, 2)}, part));
    EXPECT_EQ(getRenderingError(Engine(font)), invalidFormat);
}

TEST(HostilePictures, AreNoneOfThoseInUse) {
    GlyphPicture titled = makePicture();
    titled.file = addPngChunk(titled.file, "tEXt", Bytes(1000, 'a'));
    for (const GlyphPicture& picture : {makePicture(), titled}) {
        for (const Bytes& font : buildFonts({{8, {picture}}})) {
            expectSameAsFreeType(font, TestGlyph::a);
        }
    }
    for (const unsigned int format : {1U, 2U, 3U, 4U, 5U}) {
        const PictureStrike strike = {8, {makePicture(), makePicture(TestGlyph::underscore)}, format};
        expectSameAsFreeType(buildFont(Testing::buildCbdt({strike})), TestGlyph::underscore);
    }
    const std::vector<PictureParts> compounds = {{2, 3}, {3}};
    expectSameAsFreeType(buildFont(Testing::buildCompoundCbdt(8, compounds, makePicture(3))), TestGlyph::a);
}

TEST(HostilePictures, DoNoHarmToAFaceWithOutlines) {
    const Bytes file = addPngChunk(makePicture().file, "zTXt", Bytes(70000, 1));
    const CbdtTables tables = Testing::buildCbdt({{8, {makePicture(file)}}});
    const Engine engine(makeTestFont().setTable("EBLC", tables.cblc).setTable("EBDT", tables.cbdt).build());
    EXPECT_EQ(render(engine, TestGlyph::a)->bitmap.pixel_mode, FT_PIXEL_MODE_GRAY);
}

} // namespace Vell::FontEngine
