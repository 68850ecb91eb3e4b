#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace Vell::TextLayout {

/// Where the lines of a paragraph stand. Start and End follow the base direction of each line.
enum class TextAlignment : unsigned char {
    Start,
    End,
    Left,
    Right,
    Center,
    /// Widens spaces, and the space between ideographs and kana, and elongates words of Arabic, so that the
    /// lines fill the width. Lines before a mandatory break and the last lines of paragraphs stand at the
    /// start, and so do lines without anything to widen. Behind a tab, only what follows it is widened.
    Justify,
};

/// How a Paragraph breaks and places its lines. A plain value: set the members, or chain the setters. All
/// lengths are in the units of the font size.
///
///     const auto style = ParagraphStyle().setWidth(300.0F).setAlignment(TextAlignment::Justify);
struct ParagraphStyle {
    static constexpr float unlimitedWidth = std::numeric_limits<float>::infinity();
    static constexpr std::size_t unlimitedLines = std::numeric_limits<std::size_t>::max();

    /// With unlimitedWidth, lines end only at mandatory breaks, and alignment refers to the widest line.
    float width = unlimitedWidth;
    TextAlignment alignment = TextAlignment::Start;
    /// Whether Justify draws tatweels between joined letters of Arabic, at most one place in each word and
    /// half an em there, if the font has them. Spaces take the rest.
    bool elongates = true;
    /// The height of lines, as a multiple of the fonts' own. Half of what it adds stands above the text.
    float lineHeight = 1.0F;
    /// The distance from the start of a line to each stop, in ascending order.
    std::vector<float> tabStops = {};
    /// Behind the tabStops, there is a stop at every multiple of this. With 0, it is eight times the width of
    /// a space in the first font of the text.
    float tabDistance = 0.0F;
    std::size_t maxLines = unlimitedLines; ///< at least 1
    /// What stands at the end of the last line if maxLines leaves out a part of the text. Empty if nothing.
    std::string ellipsis = {};

    ParagraphStyle& setWidth(float value) {
        width = value;
        return *this;
    }
    ParagraphStyle& setAlignment(TextAlignment value) {
        alignment = value;
        return *this;
    }
    ParagraphStyle& setElongates(bool value) {
        elongates = value;
        return *this;
    }
    ParagraphStyle& setLineHeight(float value) {
        lineHeight = value;
        return *this;
    }
    ParagraphStyle& setTabStops(std::vector<float> value) {
        tabStops = std::move(value);
        return *this;
    }
    ParagraphStyle& setTabDistance(float value) {
        tabDistance = value;
        return *this;
    }
    ParagraphStyle& setMaxLines(std::size_t value) {
        maxLines = value;
        return *this;
    }
    ParagraphStyle& setEllipsis(std::string value = "\u2026") {
        ellipsis = std::move(value);
        return *this;
    }
};

} // namespace Vell::TextLayout
