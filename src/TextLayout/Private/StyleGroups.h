#pragma once

#include <TextLayout/Public/TextStyle.h>

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace Vell::TextLayout {

/// The styles of a text. Neighbours that look the same are one span, and neighbours that differ only in what
/// does not influence glyphs, such as colours, are of one group: the text is shaped as if they had the same
/// style.
class StyleGroups {
public:
    /// Asserts that the spans are in order and cover the text.
    StyleGroups(std::string_view text, const std::vector<TextSpan>& spans);

    struct Span {
        std::uint32_t begin;
        std::uint32_t end;
        std::uint32_t style; ///< in getStyles()
        std::uint32_t group;
    };

    /// In order; they cover the text. A text without characters has one for the style that it was given, if
    /// any.
    const std::vector<Span>& getSpans() const { return _spans; }
    const std::vector<TextStyle>& getStyles() const { return _styles; }
    /// The styles themselves, when the groups are not needed any more.
    std::vector<TextStyle> takeStyles() { return std::move(_styles); }
    std::uint32_t getGroupCount() const { return _groupCount; }

private:
    void add(const TextSpan& span);

    std::vector<Span> _spans;
    std::vector<TextStyle> _styles;
    std::uint32_t _groupCount = 0;
};

} // namespace Vell::TextLayout
