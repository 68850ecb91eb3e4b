#include <FontEngine/AssertionText.h>

#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

static_assert(std::is_nothrow_move_constructible_v<OutlineGlyph> && std::is_copy_assignable_v<OutlineGlyph>);

TEST(OutlineGlyph, ReturnsItsArguments) {
    const auto path = std::make_shared<const Gfx::Path>();
    const OutlineGlyph glyph(path, -12.5F);
    EXPECT_EQ(glyph.getPath(), path);
    EXPECT_EQ(glyph.getAdvance(), -12.5F);
}

TEST(OutlineGlyphRun, KeepsItsUnitsPerEmWithoutGlyphs) {
    for (const int units : {0, 1000, 2048, 65535}) {
        const auto unitsPerEM = static_cast<unsigned short>(units);
        const OutlineGlyphRun run({}, unitsPerEM);
        EXPECT_TRUE(run.getGlyphs().empty());
        EXPECT_EQ(run.getUnitsPerEM(), unitsPerEM);
    }
}

TEST(OutlineGlyphRun, SharesItsPathsWithItsCopies) {
    auto path = std::make_shared<const Gfx::Path>();
    const std::weak_ptr<const Gfx::Path> watch = path;
    std::vector<OutlineGlyph> glyphs(1, OutlineGlyph(std::move(path), 1.0F));
    auto run = std::make_unique<OutlineGlyphRun>(std::move(glyphs), static_cast<unsigned short>(1000));
    const OutlineGlyphRun copy = *run;
    run.reset();
    EXPECT_EQ(copy.getGlyphs().at(0).getPath(), watch.lock());
    EXPECT_NE(watch.lock(), nullptr);
}

TEST(OutlineGlyphDeathTest, AssertsItsPath) {
    EXPECT_DEATH(OutlineGlyph(nullptr, 1.0F),
                 Testing::printsAssertion("FontEngine/Renderer/FE_OutlineGlyph:26", "_path"));
}

} // namespace
} // namespace Vell::FontEngine
