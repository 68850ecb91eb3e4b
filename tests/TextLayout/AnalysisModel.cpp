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

bool startsParagraph(const std::vector<Character>& characters, std::size_t index) {
    if (index == 0) {
        return true;
    }
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
    const BidiLevels levels = resolveLevels(toUtf16(text), direction);
    const std::vector<ScriptRun> scripts = findScriptRuns(text);
    const std::vector<Character> characters = decode(text);
    AnalysisModel model{{}, {}, findClustersByIcu(text), true};
    std::size_t paragraphBegin = 0;
    std::size_t itemBegin = 0;
    BidiLevel itemLevel = 0;
    std::string itemScript;
    const auto endItem = [&](std::size_t end) {
        if (end > itemBegin) {
            model.items.push_back(describeRange(itemBegin, end, itemLevel) + " " + itemScript);
            model.isPlain = model.isPlain && itemLevel == 0;
        }
        itemBegin = end;
    };
    const auto endParagraph = [&](std::size_t end) {
        if (end > paragraphBegin) {
            const BidiLevel base = levels.paragraphs[model.paragraphs.size()];
            model.paragraphs.push_back(describeRange(paragraphBegin, end, base));
        }
        paragraphBegin = end;
    };
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const std::size_t begin = characters[i].begin;
        const bool isFirst = startsParagraph(characters, i);
        BidiLevel level = levels.characters[i];
        if (isFirst) {
            endItem(begin);
            endParagraph(begin);
        }
        if (level == removedFromLine) {
            level = isFirst ? levels.paragraphs[model.paragraphs.size()] : itemLevel;
        }
        const std::string script = findScript(scripts, begin);
        if (level != itemLevel || script != itemScript) {
            endItem(begin);
        }
        itemLevel = level;
        itemScript = script;
    }
    endItem(text.size());
    endParagraph(text.size());
    return model;
}

AnalysisModel describe(const TextAnalysis& analysis, std::size_t textSize) {
    AnalysisModel model{{}, {}, {}, analysis.isPlain};
    for (const BidiParagraph& paragraph : analysis.paragraphs) {
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
