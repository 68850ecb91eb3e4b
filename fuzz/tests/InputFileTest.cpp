#include <fuzz/support/InputFile.h>

#include <fuzz/support/ByteReader.h>
#include <fuzz/support/Harness.h>

#include <gmock/gmock.h>

#include <cmath>
#include <stdexcept>

namespace Vell::Fuzz {

using testing::ElementsAre;

TEST(HexText, SpellsBytes) {
    EXPECT_THAT(parseHex("00 ff\n7F80\n"), ElementsAre(0x00, 0xFF, 0x7F, 0x80));
    EXPECT_THAT(parseHex(""), ElementsAre());
}

TEST(HexText, MayExplainItself) {
    EXPECT_THAT(parseHex("# a header: ab\n01 # one\n#\n02"), ElementsAre(1, 2));
}

TEST(HexText, IsRefusedWhenItSpellsNoBytes) {
    EXPECT_THROW(parseHex("0"), std::invalid_argument);
    EXPECT_THROW(parseHex("0\n1"), std::invalid_argument) << "a byte stands in one line";
    EXPECT_THROW(parseHex("0g"), std::invalid_argument);
}

TEST(Input, ThatDoesNotExistIsAnError) {
    const std::filesystem::path missing = std::filesystem::path(testing::TempDir()) / "no such input";
    EXPECT_THROW(readInput(missing), std::runtime_error);
}

TEST(Harness, HasAName) {
    EXPECT_THROW(runHarness("nothing", {}), std::invalid_argument);
    for (const char* const name : {"font", "text", "cache", "sfnt", "cairo"}) {
        EXPECT_NO_THROW(runHarness(name, {})) << name;
    }
}

TEST(ByteReader, GivesZerosBehindTheEnd) {
    const Testing::Bytes bytes = {1, 2, 3};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.takeU16(), 0x0102U);
    EXPECT_FALSE(reader.isAtEnd());
    EXPECT_EQ(reader.takeU16(), 0x0300U);
    EXPECT_TRUE(reader.isAtEnd());
    EXPECT_EQ(reader.takeU8(), 0U);
    EXPECT_THAT(reader.takeRest(), ElementsAre());
}

TEST(ByteReader, HandsOverTheRest) {
    const Testing::Bytes bytes = {1, 2, 3};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.takeU8(), 1U);
    EXPECT_THAT(reader.takeRest(), ElementsAre(2, 3));
    EXPECT_TRUE(reader.isAtEnd());
}

TEST(ByteReader, MeasuresWhatIsUsualAndWhatIsNot) {
    const Testing::Bytes bytes = {12, 128, 0xBF, 255, 0xC0, 2, 0xC0, 22, 0xE0 + 16, 0, 0xE0 + 16, 1, 0xFF, 0};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.takeMeasure(), 12.5F);
    EXPECT_EQ(reader.takeMeasure(), 191.99609375F);
    EXPECT_EQ(reader.takeMeasure(), -1.0F);
    EXPECT_TRUE(std::isnan(reader.takeMeasure()));
    EXPECT_EQ(reader.takeMeasure(), 1.0F);
    EXPECT_EQ(reader.takeMeasure(), -1.00390625F);
    EXPECT_EQ(reader.takeMeasure(), std::ldexp(1.0F, 120));
}

TEST(ByteReader, KeepsUsualFactorsSmall) {
    const Testing::Bytes bytes = {0x40, 0, 0xBF, 255, 0xC0, 2};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.takeFactor(), 1.0F);
    EXPECT_LT(reader.takeFactor(), 3.0F);
    EXPECT_EQ(reader.takeFactor(), -1.0F);
}

} // namespace Vell::Fuzz
