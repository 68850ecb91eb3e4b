#include <support/FontBuilder.h>
#include <support/OpenedFont.h>

#include <FontEngine/InstalledFonts.h>
#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>
#include <FontLoaders/Public/CompositeGlyphs.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace Vell::FontLoaders {
namespace {

using Testing::Bytes;
using Testing::FontBuilder;
using Testing::FontComponent;
using Testing::FontGlyph;
using Testing::OpenedFont;

/// Instruction codes of the TrueType interpreter.
enum Code : unsigned char {
    alongY = 0x00,        // SVTCA[y]
    pop = 0x21,           // POP
    touch = 0x2E,         // MDAP
    shiftByPixels = 0x38, // SHPIX
    push = 0xB0           // PUSHB; with the number of bytes less one added
};

/// Makes a contour of so many points.
Testing::FontOutline makeOutline(unsigned int points) {
    Testing::FontContour contour;
    for (unsigned int i = 0; i < points; ++i) {
        contour.push_back({static_cast<int>(i % 1000), static_cast<int>(i * 7 % 900)});
    }
    return {contour};
}

/// Makes a program of so many bytes that does nothing.
Bytes makeIdleProgram(std::size_t size) {
    Bytes program;
    while (program.size() + 3 <= size) {
        program.insert(program.end(), {push, 1, pop});
    }
    program.resize(size, alongY);
    return program;
}

FontGlyph makeGlyph(unsigned int points, std::size_t programSize) {
    return {500, makeOutline(points), makeIdleProgram(programSize)};
}

/// Writes a two-byte number into the table of limits (maxp).
Bytes buildWithLimit(FontBuilder font, std::size_t place, unsigned int value) {
    Bytes maxp = font.buildTables().at("maxp");
    maxp[place] = static_cast<unsigned char>(value >> 8);
    maxp[place + 1] = static_cast<unsigned char>(value);
    return font.setTable("maxp", maxp).build();
}

constexpr std::size_t twilightPoints = 16;
constexpr std::size_t stackElements = 24;

FontBuilder makeFont(const std::vector<FontGlyph>& glyphs) {
    FontBuilder font;
    for (const FontGlyph& glyph : glyphs) {
        font.addGlyph(glyph);
    }
    return font.map('A', 1);
}

FT_Error findError(const Bytes& file, unsigned int glyph, int flags = FT_LOAD_DEFAULT) {
    return findGlyphError(OpenedFont(file).get(), glyph, flags);
}

std::uint64_t measure(const Bytes& file, unsigned int glyph) {
    return Internal::GlyfReader(OpenedFont(file).get()).measureProgramWork(glyph);
}

/// The cost of an instruction in addition to its points, and of a program for the builder's storage area.
constexpr std::uint64_t instruction = 8;
constexpr std::uint64_t storage = 64 / 16;

/// The program of glyph 1, a box, moves the first of its lower points by a pixel. The program of glyph 2 is
/// too long.
Bytes makeMovingFont(const std::string& family) {
    FontGlyph box = Testing::makeBoxGlyph(600, 100, 0, 500, 700);
    box.instructions = {alongY, push, 0, touch, push + 1, 0, 64, shiftByPixels};
    FontBuilder font(family);
    font.map('A', font.addGlyph(box));
    font.addGlyph(makeGlyph(30'000, 60'000));
    return font.build();
}

bool runsPrograms(FT_Face face, int flags) {
    EXPECT_EQ(FT_Load_Glyph(face, 1, flags), 0);
    const FT_Vector* const points = face->glyph->outline.points;
    return points[0].y != points[3].y;
}

} // namespace

TEST(GlyphPrograms, MayBeAsLongAsTheirPointsAllow) {
    static_assert(maxProgramWork == 250'000'000);
    const OpenedFont font(
        makeFont({makeGlyph(24'999 - instruction, 10'000), makeGlyph(25'000 - instruction, 10'000)}).build());
    EXPECT_EQ(findGlyphError(font.get(), 1, FT_LOAD_DEFAULT), FT_Err_Ok);
    EXPECT_EQ(findGlyphError(font.get(), 2, FT_LOAD_DEFAULT), FT_Err_Execution_Too_Long)
        << "it is the storage that exceeds the limit";
}

TEST(GlyphPrograms, NeedNoWorkInAGlyphWithoutThem) {
    const Bytes file = makeFont({makeGlyph(30'000, 0), {500, {}, {}, {{1}, {1}}}, FontGlyph()}).build();
    for (const unsigned int glyph : {0U, 1U, 2U, 3U, 4U}) {
        EXPECT_EQ(measure(file, glyph), 0U) << glyph;
    }
}

TEST(GlyphPrograms, OfPartsAndOfTheCompositeAddUp) {
    const FontGlyph pair{500, {}, makeIdleProgram(4000), {{1}, {1}}};
    const FontGlyph nested{500, {}, makeIdleProgram(5000), {{2}, {1}, {0}}};
    const Bytes file = makeFont({makeGlyph(100, 3000), pair, nested}).build();
    const std::uint64_t single = storage + 3000 * (100 + instruction);
    const std::uint64_t both = storage + 4000 * (200 + instruction);
    EXPECT_EQ(measure(file, 1), single);
    EXPECT_EQ(measure(file, 2), 2 * single + both);
    EXPECT_EQ(measure(file, 3), 3 * single + both + storage + 5000 * (300 + instruction));
}

TEST(GlyphPrograms, CountAtLeastAMinimumLength) {
    const Bytes file = makeFont({makeGlyph(1000, 1), makeGlyph(1000, 2000)}).build();
    EXPECT_EQ(measure(file, 1), storage + 2000 * (1000 + instruction));
    EXPECT_EQ(measure(file, 2), measure(file, 1));
}

TEST(GlyphPrograms, CountTheTwilightZoneIfItHasMorePoints) {
    constexpr unsigned int phantoms = 4;
    FontBuilder font = makeFont({makeGlyph(100, 10'000)});
    EXPECT_EQ(measure(buildWithLimit(font, twilightPoints, 60'000), 1),
              storage + 10'000 * (2 * (100 + phantoms) + instruction))
        << "FreeType has no more of them than twice the points and control values";
    font.setTable("cvt ", Bytes(60'000));
    const Bytes file = buildWithLimit(font, twilightPoints, 40'000);
    EXPECT_EQ(measure(file, 1), (30'000 + 64) / 16 + 10'000 * (40'000 + phantoms + instruction));
    EXPECT_EQ(findError(file, 1), FT_Err_Execution_Too_Long);
}

TEST(GlyphPrograms, CountTheSizeOfTheStack) {
    const FontBuilder font = makeFont({makeGlyph(100, 10'000)});
    EXPECT_EQ(measure(buildWithLimit(font, stackElements, 64'000), 1),
              storage + 10'000 * (64'000 / 16 + instruction));
}

TEST(GlyphPrograms, OfManyPartsCanTogetherExceedTheLimit) {
    const FontGlyph many{500, {}, {}, std::vector<FontComponent>(2000, FontComponent{1})};
    const Bytes file = makeFont({makeGlyph(4, 60'000), many}).build();
    EXPECT_EQ(findError(file, 1), FT_Err_Ok);
    EXPECT_EQ(findError(file, 2), FT_Err_Execution_Too_Long);
}

TEST(GlyphPrograms, LongerThanTheirGlyphAreLeftToFreeType) {
    FontBuilder builder = makeFont({makeGlyph(25'000, 20'000)});
    Bytes glyf = builder.buildTables().at("glyf");
    glyf.resize(30'000);
    glyf[12] = glyf[13] = 0xFF; // the length of the program
    Testing::ByteWriter loca;
    for (const std::uint32_t offset : {0U, 0U, 30'000U}) {
        loca.addU32(offset);
    }
    const OpenedFont font(builder.setTable("glyf", glyf).setTable("loca", loca.getBytes()).build());
    EXPECT_EQ(findGlyphError(font.get(), 1, FT_LOAD_DEFAULT), FT_Err_Ok);
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 10 * 64, 72, 0), 0);
    EXPECT_EQ(FT_Load_Glyph(font.get(), 1, FT_LOAD_DEFAULT), FT_Err_Too_Many_Hints);
}

TEST(GlyphPrograms, OfACompositeMayBeginAfterItsGlyph) {
    // The last record of glyph 3 announces a program, so the first word of glyph 4 is read as its length.
    const FontGlyph composite{500, {}, makeIdleProgram(2), {{1}}};
    FontBuilder builder = makeFont({makeGlyph(20'000, 0), FontGlyph(), composite, makeGlyph(4, 0)});
    auto tables = builder.buildTables();
    Bytes& loca = tables.at("loca");
    const std::size_t begin = std::size_t{loca[13]} << 16U | std::size_t{loca[14]} << 8U | loca[15];
    const std::size_t end = begin + 10 + 8; // after the header and one record
    loca[17] = static_cast<unsigned char>(end >> 16U);
    loca[18] = static_cast<unsigned char>(end >> 8U);
    loca[19] = static_cast<unsigned char>(end);
    EXPECT_EQ(findError(builder.build(), 3), FT_Err_Ok);
    EXPECT_EQ(findError(builder.setTable("loca", loca).build(), 3), FT_Err_Execution_Too_Long);
}

TEST(GlyphPrograms, AreCheckedOnlyIfFreeTypeRunsThem) {
    const OpenedFont font(makeMovingFont("Test Sans"));
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 10 * 64, 72, 0), 0);
    unsigned int refusals = 0;
    for (const long target : {FT_LOAD_TARGET_MONO, FT_LOAD_TARGET_NORMAL, FT_LOAD_TARGET_LIGHT}) {
        for (const long wishes :
             {0L, FT_LOAD_NO_HINTING, FT_LOAD_NO_SCALE, FT_LOAD_FORCE_AUTOHINT, FT_LOAD_NO_AUTOHINT,
              FT_LOAD_FORCE_AUTOHINT | FT_LOAD_NO_AUTOHINT, FT_LOAD_NO_HINTING | FT_LOAD_NO_AUTOHINT}) {
            const int flags = static_cast<int>(wishes | target);
            const bool isRefused = findGlyphError(font.get(), 2, flags) == FT_Err_Execution_Too_Long;
            EXPECT_EQ(isRefused, runsPrograms(font.get(), flags)) << flags;
            refusals += isRefused ? 1 : 0;
        }
    }
    EXPECT_EQ(refusals, 8U);
}

TEST(GlyphPrograms, AreCheckedUnderAllFlagsIfFreeTypeAlwaysRunsThem) {
    const OpenedFont font(makeMovingFont("DFKaiSho-SB"));
    ASSERT_TRUE(FT_IS_TRICKY(font.get()));
    ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, 10 * 64, 72, 0), 0);
    for (const long wishes : {0L, FT_LOAD_NO_HINTING, FT_LOAD_NO_SCALE, FT_LOAD_FORCE_AUTOHINT}) {
        const int flags = static_cast<int>(wishes);
        EXPECT_TRUE(runsPrograms(font.get(), flags)) << flags;
        EXPECT_EQ(findGlyphError(font.get(), 2, flags), FT_Err_Execution_Too_Long) << flags;
    }
}

TEST(GlyphPrograms, AreCheckedAfterTheNumberOfParts) {
    const std::vector<FontComponent> parts(maxGlyphParts, FontComponent{1});
    const Bytes file = makeFont({makeGlyph(4, 60'000), {500, {}, {}, parts}}).build();
    EXPECT_EQ(findError(file, 2), FT_Err_Invalid_Composite);
    EXPECT_EQ(findError(file, 2, FT_LOAD_NO_HINTING), FT_Err_Invalid_Composite);
}

TEST(GlyphPrograms, OfInstalledFontsAreLessThanATwentiethOfTheLimit) {
    std::size_t programs = 0;
    for (const std::filesystem::path& path : FontEngine::listInstalledFonts()) {
        try {
            const OpenedFont font(FontEngine::readFile(path));
            const Internal::GlyfReader reader(font.get());
            for (FT_Long glyph = 0; glyph < font->num_glyphs; ++glyph) {
                const std::uint64_t work = reader.measureProgramWork(static_cast<unsigned int>(glyph));
                ASSERT_LT(work, maxProgramWork / 20) << path << " glyph " << glyph;
                programs += work != 0 ? 1 : 0;
            }
        } catch (const FreeTypeException&) {
            continue; // not a font, or a font that the loader refuses
        }
    }
    EXPECT_GT(programs, 10'000U) << "the tests' packages alone have more";
}

} // namespace Vell::FontLoaders
