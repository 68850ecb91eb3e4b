#pragma once

#include <TextLayout/Private/LineLayout.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Vell::TextLayout {

/// The places of a line and where they are. A place belongs to the part before it and to the part behind it,
/// which stand side by side only if their levels are equal.
class LineCarets {
public:
    LineCarets(const ParagraphLayout& layout, std::size_t line);

    const LineLayout& getLayout() const { return _layout; }

    /// Where the caret of a place is.
    Caret getCaret(TextPlace place) const;

    /// What is at x; whatever is left or right of the line counts as its end.
    TextHit hitTest(double x) const;

    /// The next place to the right, or to the left. None at the end of the line.
    std::optional<std::uint32_t> findNeighbor(TextPlace place, bool toRight) const;

    /// The place behind the first cluster from the left, or from the right. None on an empty line.
    std::optional<std::uint32_t> enterLine(bool toRight) const;

private:
    /// A place at one of its two positions. The part is null at the start and the end of the line.
    struct Edge {
        const LinePart* part;
        std::uint32_t offset;
        bool isAtRightEnd; ///< if the part is null: whether it is the right end of the line
    };

    Edge findEdge(TextPlace place) const;
    Edge getEndOfLine(bool isEnd) const;
    double getX(const Edge& edge) const;
    const LinePart* findPart(std::uint32_t offset) const;
    /// The part beside another one that has bytes; without another one, the outermost. Null if there is none.
    const LinePart* findPartBeside(const LinePart* part, bool toRight) const;
    std::uint32_t step(const LinePart& part, std::uint32_t offset, bool toRight) const;
    std::uint32_t stepAndResolve(const LinePart& part, std::uint32_t offset, bool toRight) const;
    std::optional<std::uint32_t> enter(const LinePart* part, bool toRight) const;
    /// The offset whose automatic place is at the right or left end of the part.
    std::uint32_t resolveEnd(const LinePart& part, bool atRight) const;
    TextPlace makePlaceAtEnd(bool atRight) const;
    const LinePart* findPartAt(double x) const;
    TextPlace findPlace(const LinePart& part, std::uint32_t offset, bool isTrailing, double x) const;

    const ParagraphLayout& _paragraph;
    std::size_t _number;
    LineLayout _layout;
    std::uint32_t _begin;
    std::uint32_t _end; ///< of the content
};

} // namespace Vell::TextLayout
