#include <TextLayout/Public/TextBoundaries.h>

#include <TextLayout/Private/BreakIterator.h>
#include <TextLayout/Private/ClusterFinder.h>
#include <TextLayout/Private/Utf16Text.h>

namespace Vell::TextLayout {

std::vector<std::size_t> findGraphemeBoundaries(std::string_view text) {
    checkLength(text);
    std::vector<std::size_t> boundaries;
    if (text.empty()) {
        return boundaries;
    }
    const ByteSet starts = findClusterStarts(text);
    boundaries.reserve(starts.count());
    boundaries.push_back(0);
    while (boundaries.back() < text.size()) {
        boundaries.push_back(starts.next(boundaries.back()));
    }
    return boundaries;
}

std::vector<LineBreak> findLineBreaks(std::string_view text) {
    std::vector<LineBreak> breaks;
    const std::u16string units = toUtf16(text);
    BreakIterator lines(UBRK_LINE);
    lines.setText(units);
    ByteCursor bytes(text);
    while (lines.next()) {
        const bool isMandatory = lines.isHard() || lines.getBoundary() == units.size();
        breaks.push_back({bytes.moveTo(lines.getBoundary()), isMandatory});
    }
    return breaks;
}

std::vector<WordBoundary> findWordBoundaries(std::string_view text) {
    std::vector<WordBoundary> boundaries;
    const std::u16string units = toUtf16(text);
    BreakIterator words(UBRK_WORD);
    words.setText(units);
    ByteCursor bytes(text);
    while (words.next()) {
        boundaries.push_back({bytes.moveTo(words.getBoundary()), words.isBehindWord()});
    }
    return boundaries;
}

} // namespace Vell::TextLayout
