#include <TextLayout/Private/TextMeasures.h>

#include <TextLayout/Private/ClusterFinder.h>
#include <TextLayout/Private/LineCharacters.h>
#include <TextLayout/Private/ShapingService.h>

#include <algorithm>
#include <iterator>
#include <numeric>

namespace Vell::TextLayout {

namespace {

std::vector<std::uint32_t> orderLogically(const ShapedRuns& runs) {
    std::vector<std::uint32_t> order(runs.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(),
              [&](std::uint32_t lhs, std::uint32_t rhs) { return runs[lhs].begin < runs[rhs].begin; });
    return order;
}

FontMeasures measureEmptyText(const ShapedText& text) {
    if (!text.getFonts().empty()) {
        return measureFont(text.getFonts().front());
    }
    if (!text.getService() || text.getStyles().empty()) {
        return {};
    }
    const auto space =
        text.getService()->shape(" ", {{0, 1, text.getStyles().front()}}, ParagraphDirection::LeftToRight);
    return space->getFonts().empty() ? FontMeasures{} : measureFont(space->getFonts().front());
}

} // namespace

TextMeasures::TextMeasures(const ShapedText& text)
    : _text(text)
    , _graphemes(findClusterStarts(text.getText()))
    , _pens(text)
    , _runs(orderLogically(text.getRuns()))
    , _atoms(findLineAtoms(text, _runs, _pens, _graphemes))
    , _fontOfEmptyText(text.getText().empty() ? measureEmptyText(text) : FontMeasures{}) {}

const WordBoundaries& TextMeasures::getWords() const {
    std::call_once(_wordsOnce, [this] { _words = std::make_unique<const WordBoundaries>(_text.getText()); });
    return *_words;
}

const std::vector<Elongation>& TextMeasures::getElongations() const {
    std::call_once(_elongationsOnce, [this] { _elongations = findElongations(_text, _runs); });
    return _elongations;
}

std::uint32_t TextMeasures::findGrapheme(std::uint32_t offset) const {
    if (offset == 0 || _graphemes.test(offset)) {
        return offset;
    }
    return static_cast<std::uint32_t>(_graphemes.previous(offset));
}

std::uint32_t TextMeasures::findNextGrapheme(std::uint32_t offset, std::uint32_t end) const {
    return static_cast<std::uint32_t>(std::min<std::size_t>(_graphemes.next(offset), end));
}

std::size_t TextMeasures::findRun(std::uint32_t offset) const {
    const auto behind = std::partition_point(_runs.begin(), _runs.end(), [&](std::uint32_t index) {
        return _text.getRuns()[index].begin <= offset;
    });
    return behind == _runs.begin() ? 0 : static_cast<std::size_t>(behind - _runs.begin()) - 1;
}

BidiLevel TextMeasures::getBaseLevel(std::uint32_t offset) const {
    const DirectedParagraphs& paragraphs = _text.getParagraphs();
    const auto behind =
        std::partition_point(paragraphs.begin(), paragraphs.end(),
                             [&](const DirectedParagraph& paragraph) { return paragraph.begin <= offset; });
    return behind == paragraphs.begin() ? BidiLevel{0} : std::prev(behind)->baseLevel;
}

bool TextMeasures::endsParagraph(std::uint32_t offset) const {
    const DirectedParagraphs& paragraphs = _text.getParagraphs();
    const auto paragraph =
        std::partition_point(paragraphs.begin(), paragraphs.end(),
                             [&](const DirectedParagraph& other) { return other.end < offset; });
    return paragraph != paragraphs.end() && paragraph->end == offset;
}

std::uint32_t TextMeasures::findContentEnd(std::uint32_t begin, std::uint32_t end) const {
    if (begin == end) {
        return end;
    }
    const std::uint32_t last = findGrapheme(end - 1);
    const bool isSeparator = getLineCharacter(_text.getText(), last).kind == LineCharacter::Separator;
    return isSeparator ? std::max(begin, last) : end;
}

double TextMeasures::getDistance(const ShapedRun& run, std::uint32_t offset) const {
    if (offset >= run.end) {
        return _pens.getWidth(run);
    }
    const RunCluster cluster = findRunCluster(_text, run, offset);
    const double left = _pens.get(run, cluster.glyphBegin);
    const double before = run.isRightToLeft() ? _pens.getWidth(run) - _pens.get(run, cluster.glyphEnd) : left;
    if (offset <= cluster.begin) {
        return before;
    }
    const std::size_t passed = _graphemes.count(cluster.begin + 1, offset + 1);
    const std::size_t all = _graphemes.count(cluster.begin + 1, cluster.end) + 1;
    const double width = _pens.get(run, cluster.glyphEnd) - left;
    return before + width * static_cast<double>(passed) / static_cast<double>(all);
}

} // namespace Vell::TextLayout
