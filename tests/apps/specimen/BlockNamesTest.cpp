#include "specimen/BlockNames.h"

#include <gtest/gtest.h>

#include <string>

namespace Vell::Tool {

namespace {

void expectBlock(unsigned int code, unsigned int first, unsigned int last, const std::string& name) {
    const NamedBlock block = findNamedBlock(code);
    EXPECT_EQ(block.first, first) << code;
    EXPECT_EQ(block.last, last) << code;
    EXPECT_EQ(block.name, name) << code;
}

TEST(BlockNames, NamesTheBlockFromItsFirstCodeToItsLast) {
    for (const unsigned int code : {0x00U, 0x41U, 0x7FU}) {
        expectBlock(code, 0x00, 0x7F, "Basic Latin");
    }
    expectBlock(0x80, 0x80, 0xFF, "Latin-1 Supplement");
    expectBlock(0x4E2D, 0x4E00, 0x9FFF, "CJK Unified Ideographs");
    expectBlock(0x10FFFF, 0x100000, 0x10FFFF, "Supplementary Private Use Area-B");
}

TEST(BlockNames, MakesABlockOfTheGapBetweenTwo) {
    expectBlock(0x2FE0, 0x2FE0, 0x2FEF, "No block");
    expectBlock(0x2FE5, 0x2FE5, 0x2FEF, "No block");
}

} // namespace

} // namespace Vell::Tool
