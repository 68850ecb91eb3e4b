#pragma once

#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/Elongations.h>
#include <TextLayout/Private/LineAtoms.h>
#include <TextLayout/Private/PenPositions.h>
#include <TextLayout/Private/WordBoundaries.h>
#include <TextLayout/Public/ShapedText.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace Vell::TextLayout {

/// What a Paragraph needs to know of a shaped text at every width. All offsets are bytes of the text.
///
/// Memory: half a byte for each byte of the text and 32 bytes for each line break opportunity. Any thread may
/// use it.
class TextMeasures {
public:
    /// `text` must outlive the object.
    explicit TextMeasures(const ShapedText& text);

    const ShapedText& getText() const { return _text; }
    std::uint32_t getEnd() const { return static_cast<std::uint32_t>(_text.getText().size()); }

    /// Whether an extended grapheme cluster begins there, or the text ends.
    bool isGrapheme(std::uint32_t offset) const { return _graphemes.test(offset); }
    /// The beginning of the grapheme cluster that a byte belongs to; at the end of the text, the end.
    std::uint32_t findGrapheme(std::uint32_t offset) const;
    /// The beginning of the next grapheme cluster, or the end of the text, or `end` if that is less.
    std::uint32_t findNextGrapheme(std::uint32_t offset, std::uint32_t end) const;
    const PenPositions& getPens() const { return _pens; }
    const LineAtoms& getLineAtoms() const { return _atoms; }
    /// Computed on the first call.
    const WordBoundaries& getWords() const;
    /// Computed on the first call.
    const std::vector<Elongation>& getElongations() const;

    /// The number of runs before the one that holds a byte, in logical order.
    std::size_t findRun(std::uint32_t offset) const;
    std::size_t countRuns() const { return _runs.size(); }
    /// A run by its place in logical order.
    const ShapedRun& getRun(std::size_t place) const { return _text.getRuns()[_runs[place]]; }
    std::uint32_t getRunIndex(std::size_t place) const { return _runs[place]; }

    /// The base level of the paragraph that holds a byte, or of the last one.
    BidiLevel getBaseLevel(std::uint32_t offset) const;

    /// Whether a paragraph in the sense of UAX #9 ends there.
    bool endsParagraph(std::uint32_t offset) const;

    /// What a text without runs has.
    const FontMeasures& getFontOfEmptyText() const { return _fontOfEmptyText; }

    /// The end of a part of the text without the line separator that it ends with, if it does.
    std::uint32_t findContentEnd(std::uint32_t begin, std::uint32_t end) const;

    /// The distance from the logical beginning of the run to the place before a grapheme cluster of it, or to
    /// the end of the run. Inside of a ligature, each grapheme cluster has an equal share of its width.
    double getDistance(const ShapedRun& run, std::uint32_t offset) const;

private:
    const ShapedText& _text;
    ByteSet _graphemes;
    PenPositions _pens;
    std::vector<std::uint32_t> _runs; ///< in logical order
    LineAtoms _atoms;
    FontMeasures _fontOfEmptyText;
    mutable std::once_flag _wordsOnce;
    mutable std::unique_ptr<const WordBoundaries> _words;
    mutable std::once_flag _elongationsOnce;
    mutable std::vector<Elongation> _elongations;
};

} // namespace Vell::TextLayout
