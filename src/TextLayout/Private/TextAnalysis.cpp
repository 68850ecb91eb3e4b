#include <TextLayout/Private/TextAnalysis.h>

#include <TextLayout/Private/BidiLevels.h>
#include <TextLayout/Private/ClusterFinder.h>
#include <TextLayout/Private/ScriptResolver.h>
#include <TextLayout/Private/Utf16Text.h>
#include <Utils/Public/Utf8.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// The pass over a text that takes all of its levels for 0.
class Scanner {
public:
    explicit Scanner(std::string_view text)
        : _text(text)
        , _clusters(text) {}

    void scan() {
        const char* const end = _text.data() + _text.size();
        for (const char* position = _text.data(); position != end;) {
            const auto begin = static_cast<std::uint32_t>(position - _text.data());
            const char32_t codePoint = decodeUtf8(position, end);
            const CharacterTraits traits = getTraits(codePoint);
            _clusters.add(begin, static_cast<std::size_t>(position - _text.data()), traits);
            if (_isAfterSeparator && !isSecondOfCrLf(begin)) {
                startParagraph(begin);
            }
            const UScriptCode script = _scripts.resolve(codePoint, traits);
            if (script != _script) {
                changeScript(begin, script);
            }
            _isAfterSeparator = traits.isParagraphSeparator();
            _mayRaiseLevels |= traits.mayRaiseLevels();
        }
    }

    bool mayRaiseLevels() const { return _mayRaiseLevels; }

    TextAnalysis finish() {
        if (!_items.empty()) {
            endItem(static_cast<std::uint32_t>(_text.size()));
            _paragraphs.back().end = static_cast<std::uint32_t>(_text.size());
        }
        return {std::move(_paragraphs), std::move(_items), _clusters.finish(), true};
    }

private:
    bool isSecondOfCrLf(std::uint32_t begin) const {
        return begin > 0 && _text[begin] == '\n' && _text[begin - 1] == '\r';
    }

    void startParagraph(std::uint32_t begin) {
        if (begin > 0) {
            endItem(begin);
            _paragraphs.back().end = begin;
        }
        _paragraphs.push_back({begin, begin, 0});
        startItem(begin);
    }

    void startItem(std::uint32_t begin) { _items.push_back({begin, begin, 0, _scriptCode}); }

    void endItem(std::uint32_t end) { _items.back().end = end; }

    void changeScript(std::uint32_t begin, UScriptCode script) {
        const bool isFirst = _script == USCRIPT_COMMON;
        _script = script;
        _scriptCode = getScriptCode(script);
        if (isFirst) { // what stands before the first script takes it
            for (TextItem& item : _items) {
                item.script = _scriptCode;
            }
        } else if (_items.back().begin == begin) {
            _items.back().script = _scriptCode;
        } else {
            endItem(begin);
            startItem(begin);
        }
    }

    std::string_view _text;
    ClusterFinder _clusters;
    ScriptResolver _scripts;
    UScriptCode _script = USCRIPT_COMMON;
    ScriptCode _scriptCode{"Zyyy"};
    bool _isAfterSeparator = true; ///< the next character starts a paragraph, unless it ends CR LF
    bool _mayRaiseLevels = false;
    std::vector<BidiParagraph> _paragraphs;
    std::vector<TextItem> _items;
};

/// Divides the items of a text where its levels change.
class LevelSplitter {
public:
    LevelSplitter(const TextAnalysis& analysis, const BidiLevels& levels)
        : _levels(levels)
        , _paragraph(analysis.paragraphs.begin())
        , _item(analysis.items.begin()) {}

    std::vector<TextItem> split(std::string_view text) {
        const char* const end = text.data() + text.size();
        const char* position = text.data();
        for (const BidiLevel level : _levels.characters) {
            add(static_cast<std::uint32_t>(position - text.data()), level);
            decodeUtf8(position, end);
        }
        return std::move(_items);
    }

private:
    void add(std::uint32_t begin, BidiLevel level) {
        if (begin == _paragraph->end) {
            ++_paragraph;
        }
        if (begin == _item->end) {
            ++_item;
        }
        if (level == removedFromLine) {
            level = begin == _paragraph->begin ? _paragraph->baseLevel : _items.back().level;
        }
        if (begin == _item->begin) {
            _items.push_back({begin, _item->end, level, _item->script});
        } else if (level != _items.back().level) {
            _items.back().end = begin;
            _items.push_back({begin, _item->end, level, _item->script});
        }
    }

    const BidiLevels& _levels;
    std::vector<BidiParagraph>::const_iterator _paragraph;
    std::vector<TextItem>::const_iterator _item;
    std::vector<TextItem> _items;
};

void raiseLevels(std::string_view text, const BidiLevels& levels, TextAnalysis& analysis) {
    for (std::size_t i = 0; i < analysis.paragraphs.size(); ++i) {
        analysis.paragraphs[i].baseLevel = levels.paragraphs[i];
    }
    analysis.items = LevelSplitter(analysis, levels).split(text);
    analysis.isPlain = std::all_of(analysis.items.begin(), analysis.items.end(),
                                   [](const TextItem& item) { return item.level == 0; });
}

} // namespace

TextAnalysis analyse(std::string_view text, ParagraphDirection direction) {
    checkLength(text);
    Scanner scanner(text);
    scanner.scan();
    TextAnalysis analysis = scanner.finish();
    if (direction == ParagraphDirection::RightToLeft || scanner.mayRaiseLevels()) {
        raiseLevels(text, resolveLevels(toUtf16(text), direction), analysis);
    }
    return analysis;
}

} // namespace Vell::TextLayout
