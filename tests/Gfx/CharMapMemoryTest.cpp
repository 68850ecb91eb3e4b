#include <support/FailingAllocations.h>

#include <Gfx/Public/CharMap.h>

#include <gtest/gtest.h>

#include <new>

namespace Vell::Gfx {
namespace {

using Glyph = CharMap::GlyphIndexWithAdvance;

double measureBytesPerCode(unsigned int first, unsigned int step, unsigned int count) {
    const Vell::Testing::LiveBytes bytes;
    CharMap map(Glyph(0, 0));
    for (unsigned int i = 0; i < count; ++i) {
        map.insert(first + i * step, Glyph(1, 1), true);
    }
    EXPECT_EQ(map.size(), count);
    return static_cast<double>(bytes.get()) / count;
}

TEST(CharMapMemory, IsAtMostTwoEntriesPerCodeIfCodesAreDense) {
    EXPECT_LE(measureBytesPerCode(0x20, 1, 60000), 16.0);
}

TEST(CharMapMemory, IsBoundedIfEachPageHoldsOneCode) {
    EXPECT_LE(measureBytesPerCode(0x41, 256, 0x110000 / 256), 180.0);
}

TEST(CharMapMemory, IsBoundedBeyondUnicode) {
    EXPECT_LE(measureBytesPerCode(0x110000, 0x10000, 4000), 220.0);
}

TEST(CharMapMemory, HoldsADirectoryButNoPagesBelowAHighCode) {
    EXPECT_LE(measureBytesPerCode(0x10FFFF, 1, 1), 10000.0)
        << "two bytes for each of 4352 pages, and one page";
    EXPECT_LE(measureBytesPerCode(0xFFFFFFFF, 1, 1), 1000.0);
}

TEST(CharMapMemory, StaysConsistentIfAnyAllocationFails) {
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        CharMap map(Glyph(0, 0));
        hasFailed = false;
        unsigned short inserted = 0;
        const unsigned int codes[] = {'A', 'B', 'C', 0x4E00, 0x10FFFF, 0x110000, 0xFFFFFFFF};
        {
            const Vell::Testing::FailingAllocations failing(number);
            for (const unsigned int code : codes) {
                try {
                    map.insert(code, Glyph(1, 1), true);
                    ++inserted;
                } catch (const std::bad_alloc&) {
                    hasFailed = true;
                }
            }
        }
        ASSERT_EQ(map.size(), inserted) << number;
        for (const unsigned int code : codes) {
            map.insert(code, Glyph(2, 2), true);
            ASSERT_EQ(map[code].glyphIndex, 2);
        }
        ASSERT_EQ(map.size(), std::size(codes));
        ASSERT_LT(number, 100U);
    }
}

} // namespace
} // namespace Vell::Gfx
