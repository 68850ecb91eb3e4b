// What holds for every text, at every width.

#include "RandomParagraphs.h"

#include <TextLayout/Private/GlyphPiece.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

float getWidth(const std::vector<TextRectangle>& rectangles) {
    float width = 0.0F;
    for (const TextRectangle& rectangle : rectangles) {
        width += rectangle.width;
    }
    return width;
}

/// Whether nothing is drawn for the character, whatever its font has.
bool isHidden(const Paragraph& paragraph, std::size_t cluster) {
    const std::string_view rest = std::string_view(paragraph.getText()->getText()).substr(cluster);
    return rest[0] == '\n' || rest[0] == '\t' || rest.substr(0, 2) == "\u00AD";
}

/// The first bytes of the clusters of glyphs, and the end of the text.
std::set<std::size_t> findGlyphClusters(const ShapedText& text) {
    std::set<std::size_t> clusters = {text.getText().size()};
    for (const ShapedGlyph& glyph : text.getGlyphs()) {
        clusters.insert(glyph.cluster);
    }
    return clusters;
}

TEST(ParagraphProperties, LinesCoverTheTextOnce) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        std::size_t end = 0;
        float bottom = 0.0F;
        for (const ParagraphLine& line : paragraph.getLines()) {
            EXPECT_EQ(line.begin, end);
            EXPECT_LE(line.begin, line.visibleEnd);
            EXPECT_LE(line.visibleEnd, line.contentEnd);
            EXPECT_LE(line.contentEnd, line.end);
            EXPECT_FLOAT_EQ(line.top, bottom);
            end = line.end;
            bottom = line.top + line.height;
        }
        EXPECT_EQ(end, paragraph.getText()->getText().size());
        EXPECT_FLOAT_EQ(paragraph.getHeight(), bottom);
    });
}

/// Whether a cluster must stand on some line, unlike spaces and formatting characters, which may join others.
bool isLetter(const Paragraph& paragraph, std::size_t cluster) {
    constexpr std::string_view others[] = {" ", "\u202B", "\u202C", "\u2067", "\u2069"};
    const std::string_view rest = std::string_view(paragraph.getText()->getText()).substr(cluster);
    return !isHidden(paragraph, cluster) &&
           std::none_of(std::begin(others), std::end(others),
                        [&](std::string_view other) { return rest.substr(0, other.size()) == other; });
}

/// Where both a cluster of glyphs and a grapheme cluster begin.
std::set<std::size_t> findUndividedClusters(const ShapedText& text) {
    std::set<std::size_t> clusters;
    const std::set<std::size_t> glyphClusters = findGlyphClusters(text);
    for (const std::size_t boundary : findGraphemeBoundaries(text.getText())) {
        if (glyphClusters.count(boundary) != 0) {
            clusters.insert(boundary);
        }
    }
    return clusters;
}

TEST(ParagraphProperties, LinesFitUnlessTheyAreASingleCluster) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        const std::set<std::size_t> clusters = findUndividedClusters(*paragraph.getText());
        for (const ParagraphLine& line : paragraph.getLines()) {
            if (line.width > paragraph.getStyle().width * 1.001F) {
                const auto letters =
                    std::count_if(clusters.lower_bound(line.begin), clusters.lower_bound(line.visibleEnd),
                                  [&](std::size_t cluster) { return isLetter(paragraph, cluster); });
                EXPECT_LE(letters, 1) << "from " << line.begin << " to " << line.end;
            }
        }
    });
}

/// Whether two places of a line may look the same.
bool hasClusterWithoutWidth(const Paragraph& paragraph, const ParagraphLine& line) {
    const std::vector<std::size_t> boundaries = findGraphemeBoundaries(paragraph.getText()->getText());
    return std::any_of(boundaries.begin(), boundaries.end(), [&](std::size_t place) {
        return line.begin <= place && place < line.contentEnd &&
               getWidth(paragraph.makeSelection(place, place + 1)) < 0.05F;
    });
}

TEST(ParagraphProperties, EveryCaretIsHit) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        for (const std::size_t place : findGraphemeBoundaries(paragraph.getText()->getText())) {
            const Caret caret = paragraph.getCaret(place);
            const TextHit hit = paragraph.hitTest({caret.x, caret.top + caret.height / 2.0F});
            EXPECT_EQ(hit.line, caret.line);
            const Caret again = paragraph.getCaret(hit.place);
            EXPECT_NEAR(again.x, caret.x, 0.01F) << place;
            EXPECT_EQ(again.line, caret.line);
            EXPECT_TRUE(hit.place.offset == place ||
                        hasClusterWithoutWidth(paragraph, paragraph.getLines()[caret.line]))
                << place << " became " << hit.place.offset;
        }
    });
}

TEST(ParagraphProperties, HitsPutTheCaretWithinTheirHalfOfTheCluster) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        for (const ParagraphLine& line : paragraph.getLines()) {
            for (float x = line.x + 0.7F; x < line.x + line.width; x += 3.0F) {
                const TextHit hit = paragraph.hitTest({x, line.top + line.height / 2.0F});
                EXPECT_TRUE(hit.isInside);
                const Caret caret = paragraph.getCaret(hit.place);
                EXPECT_EQ(paragraph.getLines()[caret.line].top, line.top);
                const auto cluster = paragraph.makeSelection(hit.cluster, hit.cluster + 1);
                const bool isInCluster =
                    !cluster.empty() && cluster[0].x <= x && x <= cluster[0].x + cluster[0].width;
                ASSERT_TRUE(isInCluster || line.endsWithHyphen);
                const float reach = isInCluster ? cluster[0].width / 2.0F : 20.0F;
                EXPECT_LE(std::abs(caret.x - x), reach + 0.01F);
            }
        }
    });
}

TEST(ParagraphProperties, SelectionsCoverEachClusterOnce) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        std::vector<float> widths(paragraph.getLines().size());
        const std::size_t end = paragraph.getText()->getText().size();
        for (const std::size_t cluster : findGraphemeBoundaries(paragraph.getText()->getText())) {
            const auto rectangles = paragraph.makeSelection(cluster, std::min(cluster + 1, end));
            ASSERT_LE(rectangles.size(), 1U);
            if (!rectangles.empty()) {
                widths[rectangles[0].line] += rectangles[0].width;
            }
        }
        std::vector<float> whole(widths.size());
        for (const TextRectangle& rectangle : paragraph.makeSelection(0, end)) {
            whole[rectangle.line] += rectangle.width;
        }
        EXPECT_THAT(whole, ::testing::Pointwise(::testing::FloatNear(0.01F), widths));
    });
}

TEST(ParagraphProperties, MovementVisitsEveryPlaceOnce) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        const std::vector<std::size_t> boundaries = findGraphemeBoundaries(paragraph.getText()->getText());
        for (const bool isRightToLeft : {false, true}) {
            const bool isUniform =
                std::all_of(paragraph.getLines().begin(), paragraph.getLines().end(),
                            [&](const ParagraphLine& line) { return line.isRightToLeft == isRightToLeft; });
            if (!isUniform || boundaries.empty()) {
                continue;
            }
            for (const TextMovement movement : {TextMovement::Left, TextMovement::Right}) {
                const bool isForward = (movement == TextMovement::Right) != isRightToLeft;
                TextPlace place = {isForward ? 0 : boundaries.back()};
                std::multiset<std::size_t> visited = {place.offset};
                for (TextPlace next = paragraph.move(place, movement);
                     next != place && visited.size() <= boundaries.size();
                     next = paragraph.move(place, movement)) {
                    place = next;
                    visited.insert(place.offset);
                }
                EXPECT_THAT(visited, ::testing::ElementsAreArray(boundaries));
            }
        }
    });
}

/// Follows the pen over a piece. Returns where it ends.
float checkPiece(const Paragraph& paragraph, const std::set<std::size_t>& clusters, const GlyphPiece& piece) {
    const ShapedText& text = *piece.text;
    const RunFont& font = text.getFont(text.getRuns()[piece.run]);
    float x = piece.x;
    for (std::uint32_t glyph = piece.glyphBegin; glyph < piece.glyphEnd; ++glyph) {
        const ShapedGlyph& found = text.getGlyphs()[glyph];
        const float left = x;
        x += font.toUnits(static_cast<float>(found.advance));
        const auto covered = paragraph.makeSelection(found.cluster, *clusters.upper_bound(found.cluster));
        if (!covered.empty()) {
            EXPECT_GE(left, covered[0].x - 0.05F) << found.cluster;
            EXPECT_LE(x, covered[0].x + covered[0].width + 0.05F) << found.cluster;
        }
    }
    return x;
}

TEST(ParagraphProperties, PiecesDrawEveryVisibleGlyphOnceInItsPlace) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        const ShapedText& text = *paragraph.getText();
        const std::set<std::size_t> clusters = findGlyphClusters(text);
        std::vector<unsigned int> drawn(text.getGlyphs().size());
        std::vector<unsigned int> visible(text.getGlyphs().size());
        for (std::size_t line = 0; line < paragraph.getLines().size(); ++line) {
            float x = -1e9F;
            for (const GlyphPiece& piece : paragraph.getPieces(line)) {
                EXPECT_LE(x, piece.x + 0.05F);
                const bool isOfText = piece.text == &text;
                x = isOfText ? checkPiece(paragraph, clusters, piece) : piece.x;
                for (std::uint32_t glyph = piece.glyphBegin; isOfText && glyph < piece.glyphEnd; ++glyph) {
                    ++drawn[glyph];
                }
            }
            for (std::size_t glyph = 0; glyph < visible.size(); ++glyph) {
                const std::size_t cluster = text.getGlyphs()[glyph].cluster;
                const ParagraphLine& geometry = paragraph.getLines()[line];
                visible[glyph] += geometry.begin <= cluster && cluster < geometry.visibleEnd &&
                                  !isHidden(paragraph, cluster);
            }
        }
        EXPECT_EQ(drawn, visible);
    });
}

TEST(ParagraphProperties, WidthsOfLinesAddUp) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        for (const ParagraphLine& line : paragraph.getLines()) {
            const float width = getWidth(paragraph.makeSelection(line.begin, line.visibleEnd));
            if (line.endsWithHyphen) {
                EXPECT_GT(line.width, width + 5.0F);
            } else {
                EXPECT_NEAR(width, line.width, 0.05F) << "from " << line.begin << " to " << line.end;
            }
        }
    });
}

TEST(ParagraphProperties, LinesAreAsWideAsTheirTextWithoutHiddenCharacters) {
    forEachRandomParagraph([](const Paragraph& paragraph) {
        const std::string& text = paragraph.getText()->getText();
        if (text.find_first_of("\n\t") == std::string::npos && text.find("\u00AD") == std::string::npos) {
            const Paragraph whole(paragraph.getText());
            EXPECT_NEAR(getWidth(whole.makeSelection(0, text.size())), paragraph.getText()->getWidth(),
                        0.05F);
        }
    });
}

} // namespace

} // namespace Vell::Testing
