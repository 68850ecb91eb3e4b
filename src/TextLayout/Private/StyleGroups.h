#pragma once

#include <TextLayout/Public/TextStyle.h>

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// Whether texts in the two styles have the same glyphs: they differ at most in colours and lines.
bool haveEqualGlyphs(const TextStyle& lhs, const TextStyle& rhs);
/// Whether their colours and lines are the same.
bool haveEqualPaint(const TextStyle& lhs, const TextStyle& rhs);

/// The styles of a text. Neighbours that look the same are one span, and neighbours that differ only in what
/// does not influence glyphs, such as colours, are of one group: the text is shaped as if they had the same
/// style.
class StyleGroups {
public:
    /// Asserts that the spans are in order and cover the text. They must outlive the object.
    StyleGroups(std::string_view text, const std::vector<TextSpan>& spans);
    /// The whole text in one style, which must outlive the object.
    StyleGroups(std::string_view text, const TextStyle& style);

    struct Span {
        std::uint32_t begin;
        std::uint32_t end;
        std::uint32_t style; ///< for getStyle()
        std::uint32_t group;
    };

    using Spans = boost::container::small_vector<Span, 1>;

    /// In order; they cover the text. A text without characters has one for the style that it was given, if
    /// any.
    const Spans& getSpans() const { return _spans; }
    std::size_t getStyleCount() const { return _styles.size(); }
    const TextStyle& getStyle(std::uint32_t index) const { return *_styles[index]; }
    std::vector<TextStyle> copyStyles() const;
    std::uint32_t getGroupCount() const { return _groupCount; }

private:
    void add(const TextSpan& span);

    Spans _spans;
    boost::container::small_vector<const TextStyle*, 1> _styles;
    std::uint32_t _groupCount = 0;
};

} // namespace Vell::TextLayout
