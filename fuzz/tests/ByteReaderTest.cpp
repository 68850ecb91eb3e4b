#include <fuzz/support/ByteReader.h>

#include <gmock/gmock.h>

#include <cmath>

namespace Vell::Fuzz {

using testing::ElementsAre;

TEST(ByteReader, ReadsZerosBeyondTheEnd) {
    const Testing::Bytes bytes = {1, 2, 3};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.takeU16(), 0x0102U);
    EXPECT_FALSE(reader.isAtEnd());
    EXPECT_EQ(reader.takeU16(), 0x0300U);
    EXPECT_TRUE(reader.isAtEnd());
    EXPECT_EQ(reader.takeU8(), 0U);
    EXPECT_THAT(reader.takeRest(), ElementsAre());
}

TEST(ByteReader, ReturnsTheRest) {
    const Testing::Bytes bytes = {1, 2, 3};
    ByteReader reader(bytes);
    EXPECT_EQ(reader.takeU8(), 1U);
    EXPECT_THAT(reader.takeRest(), ElementsAre(2, 3));
    EXPECT_TRUE(reader.isAtEnd());
}

TEST(ByteReader, ReadsUsualAndAbsurdMeasures) {
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
