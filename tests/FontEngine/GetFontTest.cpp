#include <FontEngine/Engine.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

namespace Vell::FontEngine {
namespace {

using Testing::makeFontInfo;

TEST(GetFont, MakesANewFontWithTheSharedFace) {
    const Engine engine;
    const auto description = makeFontInfo();
    const Font first = engine.factory->getFont(description);
    const Font second = engine.factory->getFont(description);
    EXPECT_NE(&first.getFace(), &second.getFace());
    EXPECT_EQ(first.getFace(), second.getFace());
    EXPECT_EQ(first.getFontInfo(), description);
    EXPECT_EQ(&first.getFontFactory(), engine.factory.get());
    EXPECT_EQ(engine.loader->countCalls(), 1U);
}

TEST(GetFont, ThrowsLikeGetFace) {
    const Engine engine;
    EXPECT_THROW(engine.factory->getFont(makeFontInfo("Unknown")), FontLoaders::FontLoaderException);
    EXPECT_THROW(engine.factory->getFontMetrics(makeFontInfo("Unknown")), FontLoaders::FontLoaderException);
}

TEST(GetFontMetrics, ReturnsANewFontAsMetrics) {
    const Engine engine;
    const Gfx::FontMetricsFactory& factory = *engine.factory;
    const NNPtr<const Gfx::FontMetrics> metrics = factory.getFontMetrics(makeFontInfo());
    EXPECT_NE(metrics, factory.getFontMetrics(makeFontInfo()));
    const auto* const font = dynamic_cast<const Font*>(metrics.get());
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(font->getFace(), engine.getFace());
    EXPECT_EQ(metrics->getHeight(), 10.0F);
}

} // namespace
} // namespace Vell::FontEngine
