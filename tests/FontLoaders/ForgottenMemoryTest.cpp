// Memory that FreeType or a client forgets to release is freed with the library. FreeType 2.12 forgets the
// stream record of an unpacked web font, 80 bytes, if its TrueType driver unpacks the file and then another
// driver opens it, or none.

#include <support/CffFont.h>
#include <support/FontBuilder.h>
#include <support/OpenedFont.h>
#include <support/WebFont.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <malloc.h>

#include <cstdint>

namespace Vell::FontLoaders {
namespace {

using Testing::Bytes;
using Testing::FontBuilder;
using Testing::OpenedFont;
using Testing::WebFont;

using Tables = std::map<std::string, Bytes>;

constexpr std::uint32_t cffFlavor = 0x4F54544F; // "OTTO"

/// The bytes that the process has allocated, or 0 under a sanitizer: its allocator finds leaks itself.
std::size_t getHeapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Expects that the heap does not grow when `work` runs ten thousand times, after a few runs to warm up. A
/// sanitizer needs only a few runs.
template <class Work>
void expectLeavesNothing(const Work& work) {
    constexpr int warmUp = 10;
    for (int i = 0; i < warmUp; ++i) {
        work();
    }
    const std::size_t before = getHeapBytes();
    const unsigned int times = before == 0 ? 100 : 10'000;
    for (unsigned int i = 0; i < times; ++i) {
        work();
    }
    EXPECT_LT(getHeapBytes(), before + times) << "at least one byte leaks each time";
}

bool opens(const NNPtr<const Bytes>& file) {
    try {
        const FTLibraryPtr library = createFreeTypeLibrary();
        createFontFace(library, file);
    } catch (const FreeTypeException&) {
        return false;
    }
    return true;
}

void expectOpensWithoutATrace(const Bytes& bytes) {
    const NNPtr<const Bytes> file = std::make_shared<const Bytes>(bytes);
    ASSERT_TRUE(opens(file));
    expectLeavesNothing([&] { opens(file); });
}

void expectFailsWithoutATrace(const Bytes& bytes) {
    const NNPtr<const Bytes> file = std::make_shared<const Bytes>(bytes);
    ASSERT_FALSE(opens(file));
    expectLeavesNothing([&] { opens(file); });
}

FontBuilder makeFont() {
    FontBuilder font;
    font.map('A', font.addGlyph(Testing::makeBoxGlyph(600, 0, 0, 500, 700)));
    return font;
}

Tables makeCffTables() {
    Tables tables = makeFont().buildTables();
    tables.erase("glyf");
    tables.erase("loca");
    tables["CFF "] =
        Testing::CffFont{{}, {Testing::makeBoxCharString(), Testing::makeBoxCharString()}}.build();
    return tables;
}

Tables makeTablesWithout(const std::string& tag) {
    Tables tables = makeFont().buildTables();
    tables.erase(tag);
    return tables;
}

} // namespace

TEST(ForgottenMemory, DoesNotExistAfterAnOrdinaryFont) {
    expectOpensWithoutATrace(makeFont().build());
}

TEST(ForgottenMemory, IsFreedWithTheLibraryOfAWebFont) {
    expectOpensWithoutATrace(WebFont{makeFont().buildTables()}.buildWoff());
    expectOpensWithoutATrace(WebFont{makeFont().buildTables()}.buildWoff2());
}

TEST(ForgottenMemory, IsFreedWithTheLibraryOfAWebFontWithPostScriptOutlines) {
    expectOpensWithoutATrace(WebFont{makeCffTables(), cffFlavor}.buildWoff());
    expectOpensWithoutATrace(WebFont{makeCffTables(), cffFlavor}.buildWoff2());
}

TEST(ForgottenMemory, IsFreedWithTheLibraryOfABrokenWebFont) {
    expectFailsWithoutATrace(WebFont{makeTablesWithout("hhea")}.buildWoff());
    expectFailsWithoutATrace(WebFont{makeTablesWithout("hmtx")}.buildWoff2());
    expectFailsWithoutATrace(WebFont{makeCffTables()}.buildWoff());
}

TEST(ForgottenMemory, OfAClientIsFreedWithTheLibrary) {
    const NNPtr<const Bytes> file = std::make_shared<const Bytes>(makeFont().build());
    expectLeavesNothing([&] {
        const FTLibraryPtr library = createFreeTypeLibrary();
        const FTFacePtr face = createFontFace(library, file);
        for (const long size : {0L, 100L, 1000L}) {
            void* const block = face->memory->alloc(face->memory, size);
            face->memory->realloc(face->memory, size, size + 50, block);
        }
    });
}

TEST(ForgottenMemory, IsFreedWithTheLastOwnerOfTheLibrary) {
    FTLibraryPtr last(nullptr, nullptr);
    unsigned char* forgotten = nullptr;
    {
        const OpenedFont font(makeFont().build());
        forgotten = static_cast<unsigned char*>(font->memory->alloc(font->memory, 10));
        last = shareFreeTypeLibrary(font.library.get());
    }
    forgotten[9] = 1; // the address sanitizer would find a freed block
    EXPECT_EQ(forgotten[9], 1);
}

TEST(ForgottenMemory, OfAFaceIsFreedWithTheLibrary) {
    const NNPtr<const Bytes> file = std::make_shared<const Bytes>(makeFont().build());
    expectLeavesNothing([&] {
        const FTLibraryPtr library = createFreeTypeLibrary();
        const FTFacePtr face = createFontFace(library, file);
        FT_Reference_Face(face.get());
    });
    EXPECT_EQ(std::shared_ptr<const Bytes>(file).use_count(), 2) << "the bytes have no other owner";
}

} // namespace Vell::FontLoaders
