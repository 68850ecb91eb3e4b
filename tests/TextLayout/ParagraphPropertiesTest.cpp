// What holds for every text, at every width. The random texts are the same in every run.

#include "HandShaper.h"
#include "ParagraphText.h"

#include <TextLayout/Private/GlyphPiece.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <set>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

const char* const samples[] = {
    "a",      "b", "W", " ",       " ",      "fi",     "\u05D0", "\u05D1", "\u05D2", "1",
    "2",      "(", ")", "e\u0301", "\u4E00", "\u4E8C", "\t",     "\u00AD", "\n",     "\u0627",
    "\u064E", ".", ",", "\u202B",  "\u202C", "\u2067", "\u2069", "\u00A0", "\u0E01"};

std::string makeText(std::mt19937& random) {
    std::string text;
    const std::size_t count = random() % 40;
    for (std::size_t i = 0; i < count; ++i) {
        text += samples[random() % std::size(samples)];
    }
    return text;
}

ParagraphStyle makeRandomStyle(std::mt19937& random) {
    constexpr float widths[] = {0.0F, 25.0F, 70.0F, 143.0F, ParagraphStyle::unlimitedWidth};
    return ParagraphStyle()
        .setWidth(widths[random() % std::size(widths)])
        .setAlignment(static_cast<TextAlignment>(random() % 6))
        .setTabDistance(static_cast<float>(random() % 2 * 37));
}

/// Calls the function with paragraphs of all kinds.
void forEachParagraph(const std::function<void(const Paragraph&)>& check) {
    std::mt19937 random(20261122);
    HandShaper shaper;
    shaper.setLigatures();
    for (int i = 0; i < 600 && !::testing::Test::HasFailure(); ++i) {
        const auto direction = static_cast<ParagraphDirection>(random() % 3);
        const std::string text = makeText(random);
        const ParagraphStyle style = makeRandomStyle(random);
        SCOPED_TRACE(::testing::PrintToString(text) + " at " + std::to_string(style.width) + ", alignment " +
                     std::to_string(static_cast<int>(style.alignment)) + ", direction " +
                     std::to_string(static_cast<int>(direction)));
        check(Paragraph(shaper.shape(text, direction), style));
    }
}

bool isInvisible(const Paragraph& paragraph, std::size_t cluster) {
    const std::string_view rest = std::string_view(paragraph.getText()->getText()).substr(cluster);
    return rest[0] == '\n' || rest.substr(0, 2) == "\u00AD";
}

/// The grapheme clusters that have a width.
std::vector<std::size_t> findVisibleClusters(const Paragraph& paragraph) {
    std::vector<std::size_t> clusters = findGraphemeBoundaries(paragraph.getText()->getText());
    if (!clusters.empty()) {
        clusters.pop_back();
    }
    clusters.erase(std::remove_if(clusters.begin(), clusters.end(),
                                  [&](std::size_t cluster) { return isInvisible(paragraph, cluster); }),
                   clusters.end());
    return clusters;
}

TEST(ParagraphProperties, LinesCoverTheTextOnce) {
    forEachParagraph([](const Paragraph& paragraph) {
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

/// The part of a line without spaces, soft hyphens and formatting characters.
std::string getLetters(const Paragraph& paragraph, const ParagraphLine& line) {
    std::string letters = paragraph.getText()->getText().substr(line.begin, line.visibleEnd - line.begin);
    for (const std::string invisible : {" ", "\t", "\u00AD", "\u202B", "\u202C", "\u2067", "\u2069"}) {
        for (std::size_t at = letters.find(invisible); at != std::string::npos;
             at = letters.find(invisible)) {
            letters.erase(at, invisible.size());
        }
    }
    return letters;
}

TEST(ParagraphProperties, LinesFitUnlessTheyAreASingleCluster) {
    forEachParagraph([](const Paragraph& paragraph) {
        for (const ParagraphLine& line : paragraph.getLines()) {
            if (line.width > paragraph.getStyle().width * 1.001F) {
                const std::string letters = getLetters(paragraph, line);
                const std::size_t clusters = findGraphemeBoundaries(letters).size() - 1;
                EXPECT_TRUE(clusters == 1 || (clusters == 2 && letters.substr(0, 2) == "fi")) << letters;
            }
        }
    });
}

/// Whether two places of a line may look the same.
bool hasInvisibleCluster(const Paragraph& paragraph, const ParagraphLine& line) {
    const std::string_view text = paragraph.getText()->getText();
    return text.substr(line.begin, line.contentEnd - line.begin).find("\u00AD") != std::string_view::npos;
}

TEST(ParagraphProperties, EveryCaretIsHit) {
    forEachParagraph([](const Paragraph& paragraph) {
        for (const std::size_t place : findGraphemeBoundaries(paragraph.getText()->getText())) {
            const Caret caret = paragraph.getCaret(place);
            const TextHit hit = paragraph.hitTest({caret.x, caret.top + caret.height / 2.0F});
            EXPECT_EQ(hit.line, caret.line);
            const Caret again = paragraph.getCaret(hit.place);
            EXPECT_NEAR(again.x, caret.x, 0.01F) << place;
            EXPECT_EQ(again.line, caret.line);
            EXPECT_TRUE(hit.place.offset == place ||
                        hasInvisibleCluster(paragraph, paragraph.getLines()[caret.line]))
                << place << " became " << hit.place.offset;
        }
    });
}

TEST(ParagraphProperties, HitsPutTheCaretWithinTheirHalfOfTheCluster) {
    forEachParagraph([](const Paragraph& paragraph) {
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
                const float reach = isInCluster ? cluster[0].width / 2.0F : 10.0F;
                EXPECT_LE(std::abs(caret.x - x), reach + 0.01F);
            }
        }
    });
}

TEST(ParagraphProperties, SelectionsCoverEachClusterOnce) {
    forEachParagraph([](const Paragraph& paragraph) {
        std::vector<float> widths(paragraph.getLines().size());
        for (const std::size_t cluster : findVisibleClusters(paragraph)) {
            const auto rectangles = paragraph.makeSelection(cluster, cluster + 1);
            ASSERT_LE(rectangles.size(), 1U);
            if (!rectangles.empty()) {
                widths[rectangles[0].line] += rectangles[0].width;
            }
        }
        std::vector<float> whole(widths.size());
        for (const TextRectangle& rectangle :
             paragraph.makeSelection(0, paragraph.getText()->getText().size())) {
            whole[rectangle.line] += rectangle.width;
        }
        EXPECT_THAT(whole, ::testing::Pointwise(::testing::FloatNear(0.01F), widths));
    });
}

TEST(ParagraphProperties, MovementVisitsEveryPlaceOnce) {
    forEachParagraph([](const Paragraph& paragraph) {
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

TEST(ParagraphProperties, PiecesDrawEveryVisibleGlyphOnce) {
    forEachParagraph([](const Paragraph& paragraph) {
        const ShapedText& text = *paragraph.getText();
        std::multiset<std::uint32_t> drawn;
        for (std::size_t line = 0; line < paragraph.getLines().size(); ++line) {
            float x = -1e9F;
            for (const GlyphPiece& piece : paragraph.getPieces(line)) {
                EXPECT_LE(x, piece.x);
                x = piece.x;
                for (std::uint32_t glyph = piece.glyphBegin; piece.text == &text && glyph < piece.glyphEnd;
                     ++glyph) {
                    const ShapedGlyph& found = text.getGlyphs()[glyph];
                    drawn.insert(glyph);
                    const float left = x;
                    x += text.getFont(text.getRuns()[piece.run]).toUnits(static_cast<float>(found.advance));
                    const bool isLigature = text.getText().compare(found.cluster, 2, "fi") == 0;
                    const TextRectangle cluster =
                        paragraph.makeSelection(found.cluster, found.cluster + (isLigature ? 2 : 1)).at(0);
                    EXPECT_GE(left, cluster.x - 0.01F);
                    EXPECT_LE(x, cluster.x + cluster.width + 0.01F);
                }
            }
        }
        for (std::uint32_t glyph = 0; glyph < text.getGlyphs().size(); ++glyph) {
            const std::size_t cluster = text.getGlyphs()[glyph].cluster;
            const auto& lines = paragraph.getLines();
            const auto line = std::find_if(lines.begin(), lines.end(),
                                           [&](const ParagraphLine& other) { return cluster < other.end; });
            const bool isVisible = cluster < line->visibleEnd && !isInvisible(paragraph, cluster) &&
                                   text.getText()[cluster] != '\t';
            EXPECT_EQ(drawn.count(glyph), isVisible ? 1U : 0U) << cluster;
        }
    });
}

TEST(ParagraphProperties, WidthsOfLinesAddUp) {
    forEachParagraph([](const Paragraph& paragraph) {
        const std::string& text = paragraph.getText()->getText();
        for (std::size_t i = 0; i < paragraph.getLines().size(); ++i) {
            const ParagraphLine& line = paragraph.getLines()[i];
            float width = line.endsWithHyphen ? 10.0F : 0.0F;
            for (const TextRectangle& rectangle : paragraph.makeSelection(line.begin, line.visibleEnd)) {
                width += rectangle.width;
            }
            EXPECT_NEAR(width, line.width, 0.01F) << text.substr(line.begin, line.visibleEnd - line.begin);
        }
    });
}

} // namespace

} // namespace Vell::Testing
