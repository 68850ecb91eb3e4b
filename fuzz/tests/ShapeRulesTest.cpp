#include <fuzz/support/ShapeRules.h>

#include <fuzz/seeds/Seeds.h>
#include <fuzz/support/Finding.h>
#include <fuzz/support/ShapeScript.h>
#include <support/Descriptions.h>

#include <FontEngine/FontEngine.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace Vell::Fuzz {

using namespace TextLayout;

namespace {

/// Four glyphs in two runs, the second of them from right to left.
ShapedTextParts makeParts() {
    static const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const TextStyle style = FontEngine::describeFont("DejaVu Sans", 10.0F);
    const auto text = TextShaper(factory).shape("ab\u05D0\u05D1", style);
    return {text->getText(), text->getStyles(), text->getFonts(), text->getGlyphs(), text->getRuns(), {}};
}

TEST(ShapeRules, AcceptAShapedText) {
    EXPECT_NO_THROW(checkText(ShapedText(makeParts())));
    EXPECT_NO_THROW(checkSameGlyphs(ShapedText(makeParts()), ShapedText(makeParts())));
}

TEST(ShapeRules, FindRunsThatDoNotCoverTheText) {
    ShapedTextParts parts = makeParts();
    parts.runs[0].end = 1;
    EXPECT_THROW(checkText(ShapedText(parts)), Finding);
    parts = makeParts();
    parts.runs.pop_back();
    EXPECT_THROW(checkText(ShapedText(parts)), Finding);
}

TEST(ShapeRules, FindClustersOutOfOrder) {
    for (const std::size_t first : {std::size_t{0}, std::size_t{2}}) {
        ShapedTextParts parts = makeParts();
        std::swap(parts.glyphs[first].cluster, parts.glyphs[first + 1].cluster);
        EXPECT_THROW(checkText(ShapedText(parts)), Finding);
    }
}

TEST(ShapeRules, FindGlyphsThatChange) {
    ShapedTextParts parts = makeParts();
    parts.glyphs[3].advance += 1;
    EXPECT_THROW(checkSameGlyphs(ShapedText(makeParts()), ShapedText(parts)), Finding);
}

TEST(ShapeRulesScript, ReadWhatTheSeedsWrite) {
    const std::vector<Seed> seeds = makeShapeSeeds();
    const auto find = [&](const std::string& name) {
        return ShapeScript(std::find_if(seeds.begin(), seeds.end(), [&](const Seed& seed) {
                               return seed.name == name;
                           })->bytes);
    };
    const ShapeScript features = find("features");
    EXPECT_EQ(features.spans.size(), 3U);
    EXPECT_EQ(features.makeSpans()[0].style.features.size(), 3U);
    EXPECT_EQ(features.makeSpans()[1].end, 20U);
    EXPECT_EQ(features.spans[1].size, 12.0F);
    const ShapeScript table = find("table-17");
    ASSERT_EQ(table.tables.size(), 1U);
    EXPECT_EQ(table.tables[0].tag, "GSUB");
    EXPECT_EQ(table.text.substr(0, 6), "ab abc");
}

} // namespace

} // namespace Vell::Fuzz
