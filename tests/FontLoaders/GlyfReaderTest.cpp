#include <support/CffFont.h>
#include <support/FontBuilder.h>
#include <support/GuardedBytes.h>

#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>
#include <FontLoaders/Public/FreeType.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace Vell::FontLoaders::Internal {
namespace {

using Testing::Bytes;
using Testing::ByteWriter;
using Testing::FontBuilder;

/// Opens a font file whose last byte lies before unreadable memory. Returns null if FreeType refuses it.
struct GuardedFace {
    explicit GuardedFace(const Bytes& file)
        : bytes(file) {
        const auto size = static_cast<FT_Long>(bytes.size());
        FT_New_Memory_Face(library.get(), bytes.data(), size, 0, &face);
    }
    ~GuardedFace() { FT_Done_Face(face); }
    GuardedFace(const GuardedFace&) = delete;
    GuardedFace& operator=(const GuardedFace&) = delete;

    Testing::GuardedBytes bytes;
    FTLibraryPtr library = createFreeTypeLibrary();
    FT_Face face = nullptr;
};

/// Glyph 1 is a box, glyph 2 contains itself.
FontBuilder makeFont() {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    font.addGlyph({500, {}, {}, {{2}}});
    return font.map('A', 1);
}

Bytes makeOffsets(const std::vector<std::uint32_t>& offsets) {
    ByteWriter loca;
    for (const std::uint32_t offset : offsets) {
        loca.addU32(offset);
    }
    return loca.getBytes();
}

/// Moves a table to the end of its file and truncates it to `length` bytes.
Bytes moveToEnd(const Bytes& file, const std::string& tag, std::size_t length) {
    ByteWriter writer;
    const auto entry = std::search(file.begin(), file.end(), tag.begin(), tag.end());
    const auto offset = file.begin() + (entry[9] << 16 | entry[10] << 8 | entry[11]);
    const Bytes table(offset, offset + static_cast<std::ptrdiff_t>(length));
    const auto place = static_cast<std::size_t>(entry - file.begin()) + 8;
    writer.addBytes(file);
    writer.addBytes(table);
    writer.setU32(place, static_cast<std::uint32_t>(file.size()));
    writer.setU32(place + 4, static_cast<std::uint32_t>(length));
    return writer.getBytes();
}

/// Checks every glyph of the face, and some indices beyond.
void readAll(FT_Face face) {
    GlyfReader reader(face);
    for (FT_Long glyph = 0; glyph < face->num_glyphs + 3; ++glyph) {
        reader.isBounded(static_cast<unsigned int>(glyph));
    }
    reader.isBounded(std::numeric_limits<unsigned int>::max());
    reader.isAutoHinterBounded(face);
}

struct Offsets {
    const char* what;
    std::vector<std::uint32_t> values; ///< for the glyphs 0, 1 and 2 and for the end
    bool isLoop;
};

/// Offsets that place glyph 2 at `loop` in a table of `size` bytes.
std::vector<Offsets> makeOffsetsAround(std::uint32_t loop, std::uint32_t size) {
    return {{"in order", {0, 0, loop, size}, true},
            {"an empty glyph", {0, 0, loop, loop}, false},
            {"an end before the begin", {0, 0, loop, 0}, true},
            {"an end behind the table", {0, 0, loop, size + 100}, true},
            {"the largest end", {0, 0, loop, 0xFFFFFFFF}, true},
            {"a begin at the end", {0, 0, size, size}, false},
            {"a begin behind the table", {0, 0, size + 2, 0}, false},
            {"the largest begin", {0, 0, 0xFFFFFFFF, 0}, false}};
}

} // namespace

TEST(GlyfReader, ReadsNothingBeyondTheEndOfTheFile) {
    const FontBuilder font = makeFont();
    unsigned int openedCount = 0;
    for (const std::string tag : {"glyf", "head", "loca"}) {
        for (std::size_t length = 0; length <= font.buildTables().at(tag).size(); ++length) {
            const GuardedFace guarded(moveToEnd(font.build(), tag, length));
            if (guarded.face != nullptr) {
                ++openedCount;
                readAll(guarded.face);
            }
        }
    }
    EXPECT_GT(openedCount, 20U);
}

TEST(GlyfReader, ReadsNothingOfAFontWithPostScriptOutlines) {
    // The font counts the glyphs of its PostScript outlines: there are that many offsets, but the last glyph
    // has no end.
    Testing::CffFont outlines;
    outlines.charStrings.resize(4, Testing::makeBoxCharString());
    const Bytes offsets = makeOffsets(std::vector<std::uint32_t>(4));
    Bytes file = makeFont().setTable("CFF ", outlines.build()).setTable("loca", offsets).build();
    const std::string signature = "OTTO";
    std::copy(signature.begin(), signature.end(), file.begin());
    const GuardedFace guarded(moveToEnd(file, "loca", offsets.size()));
    ASSERT_NE(guarded.face, nullptr);
    ASSERT_EQ(guarded.face->num_glyphs, 4);
    readAll(guarded.face);
}

TEST(GlyfReader, FindsTheGlyphsThatFreeTypeFinds) {
    const auto tables = makeFont().buildTables();
    const Bytes& loca = tables.at("loca");
    const std::uint32_t loop = loca[10] * 256U + loca[11];
    for (const Offsets& offsets :
         makeOffsetsAround(loop, static_cast<std::uint32_t>(tables.at("glyf").size()))) {
        const GuardedFace guarded(makeFont().setTable("loca", makeOffsets(offsets.values)).build());
        ASSERT_NE(guarded.face, nullptr);
        EXPECT_EQ(GlyfReader(guarded.face).isBounded(2), !offsets.isLoop) << offsets.what;
        EXPECT_EQ(FT_Load_Glyph(guarded.face, 2, FT_LOAD_NO_SCALE),
                  offsets.isLoop ? FT_Err_Invalid_Composite : FT_Err_Ok)
            << offsets.what;
    }
}

TEST(GlyfReader, FollowsFreeTypeBeyondAnOffsetTableThatIsTooShort) {
    // In the middle of the file, FreeType reads the bytes behind the table as its last entry.
    FontBuilder font = makeFont();
    const Bytes file = font.build();
    const Bytes loca = font.buildTables().at("loca");
    Bytes shortened = file;
    const std::string tag = "loca";
    const auto entry = std::search(shortened.begin(), shortened.end(), tag.begin(), tag.end());
    entry[15] = static_cast<unsigned char>(loca.size() - 4);
    const GuardedFace inside(shortened);
    ASSERT_EQ(inside.face->num_glyphs, 3);
    EXPECT_FALSE(GlyfReader(inside.face).isBounded(2));
    EXPECT_EQ(FT_Load_Glyph(inside.face, 2, FT_LOAD_NO_SCALE), FT_Err_Invalid_Composite);
    // At the end of the file there are no such bytes, and FreeType drops the last glyph.
    const GuardedFace atEnd(moveToEnd(file, "loca", loca.size() - 4));
    ASSERT_EQ(atEnd.face->num_glyphs, 2);
    EXPECT_TRUE(GlyfReader(atEnd.face).isBounded(2));
}

TEST(GlyfReader, ChoosesTheTableThatFreeTypeChooses) {
    // An entry with the same name precedes the real one. FreeType ignores it if it lies beyond the end of the
    // file. If it is empty, it hides the real one.
    const auto addEntry = [](std::uint32_t offset, std::uint32_t length) {
        FontBuilder font = makeFont();
        font.setTable("gly0", Bytes(4)); // sorts before "glyf"
        Bytes file = font.build();
        const std::string tag = "gly0";
        const auto entry = std::search(file.begin(), file.end(), tag.begin(), tag.end());
        entry[3] = 'f';
        ByteWriter place;
        place.addU32(offset);
        place.addU32(length);
        std::copy(place.getBytes().begin(), place.getBytes().end(), entry + 8);
        return file;
    };
    const GuardedFace outside(addEntry(0xFFFFFFFF, 16));
    EXPECT_FALSE(GlyfReader(outside.face).isBounded(2));
    EXPECT_EQ(FT_Load_Glyph(outside.face, 2, FT_LOAD_NO_SCALE), FT_Err_Invalid_Composite);
    const GuardedFace tooLong(addEntry(16, 0xFFFFFFF0));
    EXPECT_FALSE(GlyfReader(tooLong.face).isBounded(2));
    EXPECT_EQ(FT_Load_Glyph(tooLong.face, 2, FT_LOAD_NO_SCALE), FT_Err_Invalid_Composite);
    const GuardedFace empty(addEntry(16, 0));
    EXPECT_TRUE(GlyfReader(empty.face).isBounded(2));
    EXPECT_NE(FT_Load_Glyph(empty.face, 2, FT_LOAD_NO_SCALE), FT_Err_Invalid_Composite);
}

TEST(GlyfReader, EndsAComponentWhereItsGlyphEnds) {
    const auto tables = makeFont().buildTables();
    const Bytes& loca = tables.at("loca");
    const std::uint32_t loop = loca[10] * 256U + loca[11];
    for (std::uint32_t size = 1; size < 14; ++size) {
        FontBuilder font = makeFont().setTable("loca", makeOffsets({0, 0, loop, loop + size}));
        const GuardedFace guarded(font.build());
        EXPECT_TRUE(GlyfReader(guarded.face).isBounded(2)) << size;
        EXPECT_NE(FT_Load_Glyph(guarded.face, 2, FT_LOAD_NO_SCALE), FT_Err_Ok) << size;
    }
}

TEST(GlyfReader, LeavesTheCharmapAsItWas) {
    const GuardedFace guarded(makeFont()
                                  .map(Testing::CharMapKind::MacRoman, 'B', 1)
                                  .map(Testing::CharMapKind::Symbol, 0xF041, 1)
                                  .build());
    for (int i = 0; i < guarded.face->num_charmaps; ++i) {
        ASSERT_EQ(FT_Set_Charmap(guarded.face, guarded.face->charmaps[i]), 0);
        EXPECT_TRUE(GlyfReader(guarded.face).isAutoHinterBounded(guarded.face));
        EXPECT_EQ(guarded.face->charmap, guarded.face->charmaps[i]);
    }
}

} // namespace Vell::FontLoaders::Internal
