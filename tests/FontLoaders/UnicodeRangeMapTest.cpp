#include <FontLoaders/FontLoaders.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

struct Block {
    unsigned int first;
    unsigned int last;
};

/// The blocks of the Unicode character database, in the order of its file.
std::vector<Block> readBlocks() {
    std::ifstream file(UNICODE_BLOCKS_FILE);
    std::vector<Block> blocks;
    for (std::string line; std::getline(file, line);) {
        Block block{};
        if (std::sscanf(line.c_str(), "%x..%x;", &block.first, &block.last) == 2) {
            blocks.push_back(block);
        }
    }
    return blocks;
}

} // namespace

TEST(UnicodeRangeMap, NumbersEveryBlockFromOne) {
    const auto blocks = readBlocks();
    ASSERT_GT(blocks.size(), 300U);
    unsigned int identifier = 0;
    for (const Block& block : blocks) {
        ++identifier;
        EXPECT_EQ(UnicodeRangeMap::find(block.first), identifier);
        EXPECT_EQ(UnicodeRangeMap::find(block.last), identifier);
        EXPECT_EQ(UnicodeRangeMap::find((block.first + block.last) / 2), identifier);
    }
}

TEST(UnicodeRangeMap, ReturnsZeroBetweenBlocks) {
    unsigned int gaps = 0;
    unsigned int next = 0;
    for (const Block& block : readBlocks()) {
        if (next < block.first) {
            ++gaps;
            EXPECT_EQ(UnicodeRangeMap::find(next), 0U);
            EXPECT_EQ(UnicodeRangeMap::find(block.first - 1), 0U);
        }
        next = block.last + 1;
    }
    EXPECT_GT(gaps, 0U);
}

TEST(UnicodeRangeMap, ReturnsZeroBeyondTheLastCodePoint) {
    EXPECT_NE(UnicodeRangeMap::find(0x10FFFF), 0U);
    EXPECT_EQ(UnicodeRangeMap::find(0x110000), 0U);
    EXPECT_EQ(UnicodeRangeMap::find(~0U), 0U);
}

TEST(UnicodeRangeMap, BeginsWithBasicLatin) {
    EXPECT_EQ(UnicodeRangeMap::find(0), 1U);
    EXPECT_EQ(UnicodeRangeMap::find(0x7F), 1U);
    EXPECT_EQ(UnicodeRangeMap::find(0x80), 2U);
}

} // namespace Vell::Testing
