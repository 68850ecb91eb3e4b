#include "AnalysisModel.h"

#include <TextLayout/Private/BidiLevels.h>
#include <TextLayout/Private/BreakIterator.h>
#include <TextLayout/Private/Utf16Text.h>
#include <Utils/Public/Utf8.h>

#include <gmock/gmock.h>

#include <unicode/uchar.h>

#include <ostream>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

struct Character {
    std::size_t begin;
    char32_t codePoint;
};

std::vector<Character> decode(std::string_view text) {
    std::vector<Character> characters;
    const char* const end = text.data() + text.size();
    for (const char* position = text.data(); position != end;) {
        const auto begin = static_cast<std::size_t>(position - text.data());
        characters.push_back({begin, decodeUtf8(position, end)});
    }
    return characters;
}

/// Requires an index greater than 0.
bool startsParagraph(const std::vector<Character>& characters, std::size_t index) {
    const char32_t before = characters[index - 1].codePoint;
    return u_charDirection(static_cast<UChar32>(before)) == U_BLOCK_SEPARATOR &&
           !(before == U'\r' && characters[index].codePoint == U'\n');
}

std::string describeRange(std::size_t begin, std::size_t end, int level) {
    return std::to_string(begin) + " " + std::to_string(end) + " " + std::to_string(level);
}

std::vector<std::size_t> findClustersByIcu(std::string_view text) {
    const std::u16string units = toUtf16(text);
    BreakIterator iterator(UBRK_CHARACTER);
    iterator.setText(units);
    ByteCursor bytes(text);
    std::vector<std::size_t> starts{0};
    while (iterator.next()) {
        starts.push_back(bytes.moveTo(iterator.getBoundary()));
    }
    return starts;
}

std::string findScript(const std::vector<ScriptRun>& runs, std::size_t offset) {
    std::size_t run = 0;
    while (runs[run].end <= offset) {
        ++run;
    }
    return std::string(runs[run].script.getLetters());
}

/// Puts paragraphs and items together from single characters.
class ModelMaker {
public:
    ModelMaker(std::string_view text, ParagraphDirection direction)
        : _text(text)
        , _direction(direction)
        , _characters(decode(text))
        , _scripts(findScriptRuns(text)) {}

    AnalysisModel make() {
        for (std::size_t begin = 0; begin < _characters.size();) {
            std::size_t end = begin + 1;
            while (end < _characters.size() && !startsParagraph(_characters, end)) {
                ++end;
            }
            addParagraph(begin, end);
            begin = end;
        }
        _model.clusterStarts = findClustersByIcu(_text);
        return _model;
    }

private:
    std::size_t getOffset(std::size_t index) const {
        return index < _characters.size() ? _characters[index].begin : _text.size();
    }

    void addParagraph(std::size_t begin, std::size_t end) {
        const std::string_view text = _text.substr(getOffset(begin), getOffset(end) - getOffset(begin));
        const ParagraphLevels levels = resolveLevels(toUtf16(text), _direction);
        _model.paragraphs.push_back(describeRange(getOffset(begin), getOffset(end), levels.base));
        BidiLevel level = levels.base;
        std::size_t itemBegin = begin;
        for (std::size_t i = begin; i < end; ++i) {
            const BidiLevel found = levels.characters[i - begin];
            const BidiLevel next = found == removedFromLine ? level : found;
            if (i > begin && (next != level || getScript(i) != getScript(i - 1))) {
                addItem(itemBegin, i, level);
                itemBegin = i;
            }
            level = next;
        }
        addItem(itemBegin, end, level);
    }

    std::string getScript(std::size_t index) const { return findScript(_scripts, getOffset(index)); }

    void addItem(std::size_t begin, std::size_t end, BidiLevel level) {
        _model.items.push_back(describeRange(getOffset(begin), getOffset(end), level) + " " +
                               getScript(begin));
        _model.isPlain = _model.isPlain && level == 0;
    }

    std::string_view _text;
    ParagraphDirection _direction;
    std::vector<Character> _characters;
    std::vector<ScriptRun> _scripts;
    AnalysisModel _model{{}, {}, {}, true};
};

} // namespace

bool operator==(const AnalysisModel& lhs, const AnalysisModel& rhs) {
    return lhs.paragraphs == rhs.paragraphs && lhs.items == rhs.items &&
           lhs.clusterStarts == rhs.clusterStarts && lhs.isPlain == rhs.isPlain;
}

std::ostream& operator<<(std::ostream& stream, const AnalysisModel& model) {
    return stream << "paragraphs " << ::testing::PrintToString(model.paragraphs) << "\nitems "
                  << ::testing::PrintToString(model.items) << "\nclusters "
                  << ::testing::PrintToString(model.clusterStarts) << "\nplain " << model.isPlain;
}

AnalysisModel analyseByIcu(std::string_view text, ParagraphDirection direction) {
    return ModelMaker(text, direction).make();
}

AnalysisModel describe(const TextAnalysis& analysis, std::size_t textSize) {
    AnalysisModel model{{}, {}, {}, analysis.isPlain};
    for (const DirectedParagraph& paragraph : analysis.paragraphs) {
        model.paragraphs.push_back(describeRange(paragraph.begin, paragraph.end, paragraph.baseLevel));
    }
    for (const TextItem& item : analysis.items) {
        model.items.push_back(describeRange(item.begin, item.end, item.level) + " " +
                              std::string(item.script.getLetters()));
    }
    for (std::size_t offset = 0; offset <= textSize; ++offset) {
        if (analysis.clusterStarts.test(offset)) {
            model.clusterStarts.push_back(offset);
        }
    }
    return model;
}

} // namespace Vell::Testing
