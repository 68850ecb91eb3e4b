#include "FaceMetrics.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace Vell::Gfx {
namespace {

static_assert(!std::is_default_constructible_v<FactoryAccessTag>);
static_assert(!std::is_aggregate_v<FactoryAccessTag>, "or braces would open it to everybody");

TEST(BasicMetrics, StoresItsArguments) {
    const BasicMetricsPtr metrics = makeMetrics();
    EXPECT_EQ(metrics->getHeight(), 1.25F);
    EXPECT_EQ(metrics->getAscender(), 0.75F);
    EXPECT_EQ(metrics->getDescender(), 0.25F);
    EXPECT_EQ(metrics->getCapHeight(), 0.625F);
    EXPECT_EQ(metrics->getStrikeOutPosition(), 0.375F);
    EXPECT_EQ(metrics->getCharMap()['m'], CharMap::GlyphIndexWithAdvance(2, 1.0F));
    EXPECT_EQ(metrics->getCharMap().size(), 3U);
}

} // namespace
} // namespace Vell::Gfx
