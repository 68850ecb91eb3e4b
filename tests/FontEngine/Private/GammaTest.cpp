#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <gtest/gtest.h>

#include <cmath>

namespace Vell::FontEngine::Internal {
namespace {

TEST(Gamma, KeepsBlackAndWhite) {
    for (const float gamma : {0.1F, 1.0F, 1.2F, 2.2F, 30.0F}) {
        EXPECT_EQ(encodeGamma(0, gamma), 0U);
        EXPECT_EQ(encodeGamma(255, gamma), 255U);
        EXPECT_EQ(decodeGamma(0, gamma), 0U);
        EXPECT_EQ(decodeGamma(255, gamma), 255U);
    }
}

TEST(Gamma, RaisesAndTruncates) {
    // 255 (128/255)^1.2 = 111.53, 255 (128/255)^(1/1.2) = 143.59, 255 (64/255)^2 = 16.06
    EXPECT_EQ(encodeGamma(128, 1.2F), 111U);
    EXPECT_EQ(decodeGamma(128, 1.2F), 143U);
    EXPECT_EQ(encodeGamma(64, 2.0F), 16U);
    EXPECT_EQ(decodeGamma(64, 0.5F), 16U);
}

TEST(Gamma, EqualsTheSinglePrecisionFormula) {
    for (unsigned int value = 0; value < 256; ++value) {
        const float fraction = static_cast<float>(value) / 255.0F;
        EXPECT_EQ(encodeGamma(value, 1.2F), static_cast<unsigned int>(std::pow(fraction, 1.2F) * 255.0F));
        EXPECT_EQ(decodeGamma(value, 1.2F),
                  static_cast<unsigned int>(std::pow(fraction, 1.0F / 1.2F) * 255.0F));
    }
}

TEST(Gamma, LosesAtMostAFewLevelsInARoundTrip) {
    unsigned int lost = 0;
    for (unsigned int value = 0; value < 256; ++value) {
        const unsigned int back = decodeGamma(encodeGamma(value, 1.2F), 1.2F);
        EXPECT_LE(back, value);
        lost += back != value ? 1 : 0;
    }
    EXPECT_GT(lost, 0U) << "both ways truncate";
    EXPECT_EQ(decodeGamma(encodeGamma(254, 1.2F), 1.2F), 253U);
}

TEST(Gamma, IsDefinedForEveryInput) {
    EXPECT_EQ(encodeGamma(1000000, 30.0F), 0x7FFFFFFFU);
    EXPECT_EQ(decodeGamma(0, 0.0F), 0U);
    EXPECT_EQ(encodeGamma(128, NAN), 0U);
}

} // namespace
} // namespace Vell::FontEngine::Internal
