#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

using Testing::makeExtFontInfo;
using Testing::makeFaceInfo;
using Testing::makeFontInfo;

TEST(Font, ScalesTheMetricsOfItsFaceByItsSize) {
    const Engine engine(makeTestFont().setLine(800, -200, 90).build());
    const Font font = engine.getFont(20.0F);
    EXPECT_FLOAT_EQ(font.getHeight(), 21.8F);
    EXPECT_FLOAT_EQ(font.getAscent(), 16.0F);
    EXPECT_FLOAT_EQ(font.getDescent(), 4.0F);
    EXPECT_NEAR(font.getLeading(), 1.8F, 1e-5);
    EXPECT_FLOAT_EQ(font.getCapHeight(), 14.0F);
    EXPECT_FLOAT_EQ(font.getStrikeOutPosition(), 5.0F) << "300 - 50 units";
    EXPECT_EQ(font.getFontSize(), 20.0F);
    EXPECT_FLOAT_EQ(font.getTextWidth("Ax", makeExtFontInfo(1.5F)), 20 * (0.6F + 0.4F) + 2 * 1.5F);
}

TEST(Font, KeepsItsFaceAndMetricsWhenTheFactoryEvictsThem) {
    Engine engine;
    const std::weak_ptr<const FontFace> face = std::shared_ptr<const FontFace>(engine.getFace());
    {
        const Font font = engine.getFont();
        engine.factory->flush();
        EXPECT_FALSE(face.expired());
        EXPECT_EQ(font.getAscent(), 8.0F);
        EXPECT_FLOAT_EQ(font.getTextWidth("A", makeExtFontInfo()), 6.0F);
        EXPECT_NE(engine.getFace(), font.getFace());
    }
    EXPECT_TRUE(face.expired());
}

TEST(Font, SharesTheMetricsTogetherWithTheFace) {
    const Engine engine;
    const std::shared_ptr<const FontFace> face = engine.getFace();
    const long without = face.use_count();
    const Font font = engine.getFont();
    EXPECT_EQ(face.use_count(), without + 2) << "the face, and the metrics through it";
    const Font copy = font; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(copy.getFace().get(), face.get());
    EXPECT_EQ(copy.getAscent(), 8.0F);
}

/// A text whose font changes with its zoom.
struct Label {
    Font font;
};

TEST(Font, MayBeAMemberThatIsReassigned) {
    const Engine engine;
    Label label{engine.getFont(10.0F)};
    const Font twice = engine.getFont(20.0F);
    label.font = twice;
    EXPECT_EQ(label.font.getFontSize(), 20.0F);
    EXPECT_EQ(label.font.getFontInfo(), twice.getFontInfo());
    EXPECT_EQ(label.font.getAscent(), 16.0F);
    label.font = engine.getFont(30.0F);
    EXPECT_EQ(label.font.getAscent(), 24.0F);
    EXPECT_EQ(twice.getAscent(), 16.0F);
}

TEST(Font, MayLiveInAVectorThatErases) {
    const Engine engine;
    std::vector<Font> fonts;
    for (const float size : {10.0F, 20.0F, 30.0F}) {
        fonts.push_back(engine.getFont(size));
    }
    fonts.erase(fonts.begin());
    EXPECT_EQ(fonts.at(0).getAscent(), 16.0F);
    EXPECT_EQ(fonts.at(1).getAscent(), 24.0F);
    EXPECT_EQ(fonts.at(1).getFace(), engine.getFace());
}

TEST(Font, ReleasesItsFaceWhenItIsAssignedTo) {
    Engine engine;
    engine.loader->setFont("Other", false, false, makeTestFont("Other").build());
    Font font = engine.getFont();
    const std::weak_ptr<const FontFace> face = std::shared_ptr<const FontFace>(font.getFace());
    font = engine.factory->getFont(makeFontInfo("Other"));
    engine.factory->flush();
    EXPECT_TRUE(face.expired());
    EXPECT_STREQ(font.getFace()->getHandle()->family_name, "Other");
}

static_assert(std::is_base_of_v<Gfx::UniversalFontMetrics, Font>);
static_assert(std::is_nothrow_move_assignable_v<Font> && std::is_copy_assignable_v<Font>);
static_assert(std::is_nothrow_move_constructible_v<Font>);
static_assert(!std::is_constructible_v<Gfx::FactoryAccessTag> &&
                  !std::is_constructible_v<FontFactory::FactoryAccessTag>,
              "only the factory makes faces and fonts");

TEST(FontDeathTest, AssertsOnNullPointersAndALostFactory) {
    Engine engine;
    const auto null = Testing::makeMovedFrom(makeFontInfo());
    EXPECT_DEATH(engine.factory->getFont(null), Testing::printsNullDereference());
    EXPECT_DEATH(engine.factory->getFontMetrics(null), Testing::printsNullDereference());
    EXPECT_DEATH(engine.factory->getFace(Testing::makeMovedFrom(makeFaceInfo())),
                 Testing::printsNullDereference());
    Font moved = engine.getFont();
    const Font font = std::move(moved);
    EXPECT_DEATH(moved.getFontFactory(), Testing::printsNullDereference());
    engine.factory = Engine().factory;
    EXPECT_DEATH(font.getFontFactory(),
                 Testing::printsAssertion("Utils/Public/Ptr/PtrUtils:254", "plainPtr"));
}

} // namespace
} // namespace Vell::FontEngine
