#include <FontEngine/GlyphKeyFields.h>

#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <gtest/gtest.h>

#include <climits>
#include <type_traits>

namespace Vell::FontEngine {
namespace {

TEST(BitmapGlyph, ReturnsItsArguments) {
    const auto data = std::make_shared<const FT_BitmapGlyphRec_>();
    const BitmapGlyph glyph(data, {1.25F, -2.5F}, KeyFields().with(&KeyFields::unicode, '_').makeBitmap());
    EXPECT_EQ(glyph.getData(), data);
    EXPECT_EQ(glyph.getPos(), (cinder::Vec2<float>(1.25F, -2.5F)));
    EXPECT_EQ(glyph.getInfo(), KeyFields().makeBitmap());
    EXPECT_EQ(glyph.getInfo().getUnicode(), static_cast<unsigned int>('_')) << "also what equality ignores";
}

TEST(BitmapGlyph, AcceptsANullBitmap) {
    EXPECT_EQ(BitmapGlyph(nullptr, {0, 0}, KeyFields().makeBitmap()).getData(), nullptr);
}

TEST(BitmapGlyph, KeepsTheBitmapAliveInItsCopies) {
    auto data = std::make_shared<const FT_BitmapGlyphRec_>();
    const std::weak_ptr<const FT_BitmapGlyphRec_> watch = data;
    {
        auto original = std::make_unique<BitmapGlyph>(std::move(data), cinder::Vec2<float>(3, 4),
                                                      KeyFields().makeBitmap());
        const BitmapGlyph copy = *original;
        original.reset();
        EXPECT_FALSE(watch.expired());
        EXPECT_EQ(copy.getPos(), (cinder::Vec2<float>(3, 4)));
    }
    EXPECT_TRUE(watch.expired());
}

TEST(BitmapGlyph, CopiesAKeyThatIsMovedIn) {
    BitmapGlyphInfo key = KeyFields().with(&KeyFields::face, Testing::makeFaceInfo("a", true)).makeBitmap();
    const BitmapGlyph glyph(nullptr, {0, 0}, std::move(key));
    EXPECT_TRUE(key.isBold());
    EXPECT_EQ(key, glyph.getInfo());
}

TEST(BitmapGlyph, IsUnchangedWhenItIsMovedFrom) {
    BitmapGlyph glyph(std::make_shared<const FT_BitmapGlyphRec_>(), {0, 0}, KeyFields().makeBitmap());
    const BitmapGlyph moved(std::move(glyph));
    EXPECT_EQ(glyph.getInfo(), moved.getInfo());
    EXPECT_EQ(glyph.getData(), moved.getData());
}

TEST(BitmapGlyph, MovesUpInAVectorThatErases) {
    std::vector<BitmapGlyph> glyphs;
    for (const unsigned int index : {1U, 2U, 3U}) {
        glyphs.emplace_back(std::make_shared<const FT_BitmapGlyphRec_>(), cinder::Vec2<float>(),
                            KeyFields().with(&KeyFields::glyph, index).makeBitmap());
    }
    const auto last = glyphs.back().getData();
    glyphs.erase(glyphs.begin());
    EXPECT_EQ(glyphs.at(0).getInfo().getGlyphIndex(), 2U);
    EXPECT_EQ(glyphs.at(1).getInfo().getGlyphIndex(), 3U);
    EXPECT_EQ(glyphs.at(1).getData(), last);
}

static_assert(std::is_nothrow_move_constructible_v<BitmapGlyph> &&
              std::is_nothrow_move_assignable_v<BitmapGlyph> && std::is_copy_assignable_v<BitmapGlyph>);

TEST(BitmapGlyphRun, KeepsTheBoxAsItIs) {
    for (const FT_BBox box : {FT_BBox{0, 0, 0, 0}, FT_BBox{-1, -2, 3, 4}, FT_BBox{9, 8, -7, -6},
                              FT_BBox{LONG_MIN, LONG_MAX, LONG_MAX, LONG_MIN}}) {
        const BitmapGlyphRun run({}, box);
        EXPECT_EQ(run.getBBox().xMin, box.xMin);
        EXPECT_EQ(run.getBBox().yMin, box.yMin);
        EXPECT_EQ(run.getBBox().xMax, box.xMax);
        EXPECT_EQ(run.getBBox().yMax, box.yMax);
        EXPECT_TRUE(run.getGlyphs().empty());
    }
}

TEST(BitmapGlyphRun, MovesItsGlyphsIn) {
    const auto data = std::make_shared<const FT_BitmapGlyphRec_>();
    std::vector<BitmapGlyph> glyphs(2, BitmapGlyph(data, {1, 0}, KeyFields().makeBitmap()));
    const BitmapGlyph* const address = glyphs.data();
    const BitmapGlyphRun run(std::move(glyphs), {0, 0, 1, 1});
    EXPECT_EQ(run.getGlyphs().data(), address);
    const BitmapGlyphRun copy = run; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_NE(copy.getGlyphs().data(), address);
    EXPECT_EQ(copy.getGlyphs().at(1).getData(), data);
    EXPECT_EQ(data.use_count(), 2) << "all glyphs share one bitmap";
}

static_assert(std::is_copy_constructible_v<BitmapGlyphRun> && std::is_move_constructible_v<BitmapGlyphRun>);

} // namespace
} // namespace Vell::FontEngine
