// Variable fonts that are damaged, or made to consume all memory or time.

#include "VaryingFonts.h"

#include <support/ErrorText.h>
#include <support/VariableFont.h>

#include <gtest/gtest.h>

#include <chrono>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

constexpr unsigned char hostileBytes[] = {0x00, 0x01, 0x7F, 0xFF};

/// Makes an instance, which may fail with the library's exceptions only. Returns whether it did not.
bool tryInstance(Bytes bytes) {
    const auto font = makeNNPtr<const Bytes>(std::move(bytes));
    try {
        readVariations(font);
        makeFontInstance(font, {{"wght", 650.0F}});
        return true;
    } catch (const FontLoaderException&) {
        return false;
    } catch (const FreeTypeException&) {
        return false;
    }
}

std::string getError(const FontBuilder& font) {
    const auto bytes = makeNNPtr<const Bytes>(font.build());
    return getErrorText<FontLoaderException>([&] { makeFontInstance(bytes, {{"wght", 650.0F}}); });
}

} // namespace

TEST(BrokenVariations, AreRefusedOrReadWhereverTheFileEnds) {
    const Bytes whole = makeVaryingFont().build();
    EXPECT_TRUE(tryInstance(whole));
    for (std::size_t size = 0; size < whole.size(); size += 7) {
        tryInstance(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    }
    EXPECT_FALSE(tryInstance(Bytes(whole.begin(), whole.begin() + 100)));
}

TEST(BrokenVariations, OfInterAreRefusedOrReadWhereverTheFileEnds) {
    const Bytes whole = readFile(std::string(interFolder) + "Inter.var.ttf");
    for (std::size_t size = 97; size < whole.size(); size += std::size_t{97} * 97) {
        tryInstance(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
    }
}

TEST(BrokenVariations, MayHaveAnyByteInTheirTables) {
    for (const char* tag : {"fvar", "gvar"}) {
        const Bytes table = makeVaryingFont().buildTables().at(tag);
        const std::size_t step = table.size() > 200 ? 5 : 1;
        for (std::size_t position = 0; position < table.size(); position += step) {
            for (const unsigned char value : hostileBytes) {
                Bytes broken = table;
                broken[position] = value;
                tryInstance(makeVaryingFont().setTable(tag, broken).build());
            }
        }
    }
}

TEST(BrokenVariations, MayEndAnywhereInTheirTables) {
    for (const char* tag : {"fvar", "gvar"}) {
        const Bytes table = makeVaryingFont().buildTables().at(tag);
        for (std::size_t size = 1; size < table.size(); size += 3) {
            Bytes broken(table.begin(), table.begin() + static_cast<std::ptrdiff_t>(size));
            tryInstance(makeVaryingFont().setTable(tag, broken).build());
        }
    }
}

TEST(BrokenVariations, MayHaveAnyByteInWhatVariesMetricsAndControlValues) {
    const auto expectToSurvive = [](const FontBuilder& font, const char* tag, std::size_t step) {
        const Bytes table = font.buildTables().at(tag);
        for (std::size_t position = 0; position < table.size(); position += step) {
            for (const unsigned char value : hostileBytes) {
                Bytes broken = table;
                broken[position] = value;
                tryInstance(FontBuilder(font).setTable(tag, broken).build());
            }
            tryInstance(FontBuilder(font)
                            .setTable(tag, Bytes(table.begin(),
                                                 table.begin() + static_cast<std::ptrdiff_t>(position)))
                            .build());
        }
    };
    expectToSurvive(makeHintedVariableFont(), "cvar", 1);
    for (const char* tag : {"avar", "HVAR", "MVAR"}) {
        expectToSurvive(makeThreeAxisFont(), tag, 7);
    }
}

TEST(BrokenVariations, OfGlyphsMayNotOverlap) {
    FontBuilder font = makeVaryingFont();
    EXPECT_EQ(getError(font.setTable("gvar", makeOverlappingVariations(font.getGlyphCount()))),
              "the glyphs of the variable font overlap");
}

TEST(BrokenVariations, HaveBoundedCompositeGlyphs) {
    FontBuilder font("Nested");
    unsigned int part = font.addGlyph(makeBoxGlyph(500, 50, 0, 450, 700));
    for (int level = 0; level < 40; ++level) {
        FontGlyph composite;
        composite.components = {{part}, {part, 10, 10}};
        part = font.addGlyph(composite);
    }
    font.map('A', part);
    addWeightAxis(font, 400);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(getError(font), "the glyphs of the variable font have too many parts");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(BrokenVariations, MayHaveNoPartsWithoutExtent) {
    FontBuilder font("Flat");
    const unsigned int line = font.addGlyph({500, {{{50, 0}, {450, 0}}}, {}});
    FontGlyph copy;
    copy.components = {{line}};
    font.map('A', font.addGlyph(copy));
    addWeightAxis(font, 400);
    EXPECT_EQ(getError(font), "the parts of glyph 2 of the variable font have no extent");
}

TEST(BrokenVariations, MayHaveAnyByteInGlyphsWithoutPoints) {
    FontBuilder font("Pointless");
    const unsigned int space = font.addGlyph(FontGlyph());
    FontGlyph copy;
    copy.components = {{space}, {space}};
    const unsigned int noBreakSpace = font.addGlyph(copy);
    copy.components = {{noBreakSpace}};
    font.map('A', font.addGlyph(copy));
    addWeightAxis(font, 400);
    EXPECT_TRUE(tryInstance(font.build()));
    for (const char* tag : {"glyf", "loca", "hmtx"}) {
        const Bytes table = font.buildTables().at(tag);
        for (std::size_t position = 0; position < table.size(); ++position) {
            for (const unsigned char value : hostileBytes) {
                Bytes broken = table;
                broken[position] = value;
                tryInstance(FontBuilder(font).setTable(tag, broken).build());
            }
        }
    }
}

TEST(BrokenVariations, MayHaveNoGlyphThatCannotBeRead) {
    FontBuilder font = makeVaryingFont();
    Bytes glyphs = font.buildTables().at("glyf");
    glyphs[10] = 0x7F; // the last point of the first contour
    EXPECT_EQ(getError(font.setTable("glyf", glyphs)),
              "the variable font is damaged: glyph 1 cannot be read");
}

TEST(BrokenVariations, WithManyAxesCountAsStatic) {
    ByteWriter axes;
    axes.addU32(0x00010000);
    for (const unsigned int field : {16U, 2U, maxAxes + 1, 20U, 0U, 4 * (maxAxes + 1) + 4}) {
        axes.addU16(field);
    }
    for (unsigned int i = 0; i <= maxAxes; ++i) {
        axes.addText("wght");
        for (const unsigned int weight : {100U, 400U, 900U}) {
            axes.addU32(weight << 16U);
        }
        axes.addU16(0);
        axes.addU16(2);
    }
    const FontBuilder font = makeVaryingFont().setTable("fvar", axes.getBytes());
    EXPECT_TRUE(readVariations(makeNNPtr<const Bytes>(font.build())).axes.empty());
    EXPECT_EQ(getError(font), "the font has no axis \"wght\": it is not a variable font");
}

} // namespace Vell::Testing
