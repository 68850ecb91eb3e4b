#pragma once

#include <cstddef>
#include <cstdint>

namespace Vell::TextLayout {

/// A line of a Paragraph. Lengths are in the units of the font size, x to the right and y down from the top
/// left corner of the paragraph. Offsets are bytes of the text.
struct ParagraphLine {
    std::uint32_t begin;
    std::uint32_t end;        ///< with trailing spaces and the line separator
    std::uint32_t contentEnd; ///< without the line separator
    std::uint32_t visibleEnd; ///< without trailing spaces, which hang: they do not count for x and width
    float x;
    float width; ///< with a hyphen or an ellipsis at the end
    float top;
    float height; ///< from this line's top to the next one's
    float baseLine;
    float ascent;                ///< from the base line up, the greatest of the line's fonts
    float descent;               ///< from the base line down
    bool isRightToLeft;          ///< the base direction
    bool endsWithMandatoryBreak; ///< or with the end of the text
    bool endsWithHyphen;         ///< in place of a soft hyphen
    bool endsWithEllipsis;       ///< in place of the rest of the text
};

/// Which of two places the caret of an offset has where they differ: where a line is broken, and where
/// directions meet.
enum class CaretAffinity : unsigned char {
    /// At a soft break, on the next line. Where directions meet, beside the character with the lower level;
    /// the ends of the line count as having the level of its paragraph. So no two carets of a line are at
    /// the same place, unless there is something without width between them.
    Automatic,
    EndOfLine,  ///< like Automatic, but at a soft break, at the end of the line before it
    Upstream,   ///< behind the cluster that ends at the offset
    Downstream, ///< before the cluster that begins at the offset
};

/// A place between two grapheme clusters of a text.
struct TextPlace {
    std::size_t offset;
    CaretAffinity affinity = CaretAffinity::Automatic;

    friend bool operator==(const TextPlace& lhs, const TextPlace& rhs) {
        return lhs.offset == rhs.offset && lhs.affinity == rhs.affinity;
    }
    friend bool operator!=(const TextPlace& lhs, const TextPlace& rhs) { return !(lhs == rhs); }
};

/// Where a caret is drawn: a vertical stroke from the ascent of its line to the descent.
struct Caret {
    float x;
    float top;
    float height;
    std::size_t line;
    bool isRightToLeft; ///< the direction of the cluster that it stands beside
};

/// What is at a point.
struct TextHit {
    TextPlace place; ///< the nearest one, where a click puts the caret
    std::size_t
        cluster;      ///< where the grapheme cluster under the point begins, or the nearest one of the line
    bool isTrailing;  ///< whether the point is in the half of the cluster that is read last
    bool isInside;    ///< whether the point is on a line and between its ends
    std::size_t line; ///< the nearest one
};

/// A part of a selection.
struct TextRectangle {
    float x;
    float y;
    float width;
    float height; ///< that of the line
    std::size_t line;
};

/// Where move() goes.
enum class TextMovement : unsigned char {
    NextCluster,
    PreviousCluster,
    NextWord,     ///< the end of the word at or behind the place
    PreviousWord, ///< the beginning of the word at or before the place
    Left,         ///< over one cluster of the line, or to the next or previous line at its end
    Right,
    LineBegin,
    LineEnd, ///< before the line separator
};

} // namespace Vell::TextLayout
