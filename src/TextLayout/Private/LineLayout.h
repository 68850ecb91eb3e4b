#pragma once

#include <TextLayout/Private/LinePlacement.h>
#include <TextLayout/Private/ParagraphLayout.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// A part of a line that stands in one piece.
struct LinePart {
    enum class Kind : unsigned char { Text, Tab, Added };

    Kind kind;
    BidiLevel level;
    std::uint32_t begin; ///< bytes; the same as `end` for what is added
    std::uint32_t end;
    const ShapedRun* run; ///< null for what is added
    double origin;        ///< TextMeasures::getDistance of `begin`
    double width;
    double x = 0.0;

    bool isRightToLeft() const { return level % 2 != 0; }
    bool contains(std::uint32_t offset) const { return begin <= offset && offset < end; }
    /// The offset at its left or right end.
    std::uint32_t getLeft() const { return isRightToLeft() ? end : begin; }
    std::uint32_t getRight() const { return isRightToLeft() ? begin : end; }
};

/// The parts of a line from left to right, by the rules L1 and L2 of UAX #9. Costs time in proportion to
/// their number. The line separator has no part.
class LineLayout {
public:
    /// `layout` must outlive the object.
    LineLayout(const ParagraphLayout& layout, std::size_t line);

    const ParagraphLine& getLine() const { return _line; }
    const LineDetails& getDetails() const { return _details; }
    const LineGaps& getGaps() const { return _gaps; }

    /// Elongated places between two bytes, in logical order.
    struct Places {
        const ElongatedPlace* begin;
        const ElongatedPlace* end;
    };
    /// Those behind `begin`, and up to `end`.
    Places findElongated(std::uint32_t begin, std::uint32_t end) const;

    /// What the line is widened by in front of an offset.
    double getStretchAt(std::uint32_t offset) const;

    const std::vector<LinePart>& getParts() const { return _parts; }
    BidiLevel getBaseLevel() const { return _line.isRightToLeft ? 1 : 0; }

    /// Where all parts begin and end, spaces that hang included.
    double getLeft() const { return _left; }
    double getRight() const { return _parts.empty() ? _left : _parts.back().x + _parts.back().width; }

    /// Where a place is in a part that begins before it, or with it, and does not end before it.
    double getX(const LinePart& part, std::uint32_t offset) const;

    /// The beginning of the grapheme cluster of the part at x.
    std::uint32_t findCluster(const LinePart& part, double x) const;

private:
    void addRuns(std::uint32_t begin, std::uint32_t end, bool isTrailing);
    void addRun(const ShapedRun& run, std::uint32_t begin, std::uint32_t end, BidiLevel level);
    void addText(const ShapedRun& run, std::uint32_t begin, std::uint32_t end, BidiLevel level);
    std::uint32_t addTab(const ShapedRun& run, std::uint32_t begin, std::uint32_t end);
    void addAddition();
    void orderVisually();
    double getDistance(const LinePart& part, std::uint32_t offset) const;
    double getStretch(std::uint32_t begin, std::uint32_t end) const;

    const ParagraphLayout& _layout;
    const ParagraphLine& _line;
    const LineDetails& _details;
    LineGaps _gaps;
    std::vector<LinePart> _parts;
    double _pen = 0.0; ///< from the start of the line
    double _left = 0.0;
};

} // namespace Vell::TextLayout
