#include <TextLayout/Public/TextBoundaries.h>

#include <TextLayout/Private/BreakIterator.h>
#include <TextLayout/Private/Utf16Text.h>

namespace Vell::TextLayout {

std::vector<std::size_t> findGraphemeBoundaries(std::string_view text) {
    std::vector<std::size_t> boundaries;
    if (text.empty()) {
        return boundaries;
    }
    const std::u16string units = toUtf16(text);
    BreakIterator clusters(UBRK_CHARACTER, units);
    ByteCursor bytes(text);
    boundaries.push_back(0);
    while (clusters.next()) {
        boundaries.push_back(bytes.moveTo(clusters.getBoundary()));
    }
    return boundaries;
}

std::vector<LineBreak> findLineBreaks(std::string_view text) {
    std::vector<LineBreak> breaks;
    const std::u16string units = toUtf16(text);
    BreakIterator lines(UBRK_LINE, units);
    ByteCursor bytes(text);
    while (lines.next()) {
        const bool isMandatory = lines.isHard() || lines.getBoundary() == units.size();
        breaks.push_back({bytes.moveTo(lines.getBoundary()), isMandatory});
    }
    return breaks;
}

} // namespace Vell::TextLayout
