#include <TextLayout/Private/TextAnalysis.h>

#include <TextLayout/Private/BidiLevels.h>
#include <TextLayout/Private/ClusterFinder.h>
#include <TextLayout/Private/ItemLevels.h>
#include <TextLayout/Private/ScriptResolver.h>
#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Private/Utf16Text.h>

#include <algorithm>

namespace Vell::TextLayout {

namespace {

/// The pass over a text that finds everything but the levels of paragraphs that need a closer look.
class Scanner {
public:
    Scanner(std::string_view text, ParagraphDirection direction, TextAnalysis& analysis)
        : _text(text)
        , _direction(direction)
        , _paragraphs(analysis.paragraphs)
        , _items(analysis.items)
        , _isWellFormed(analysis.isWellFormed)
        , _clusters(text, analysis.clusterStarts) {}

    void scan() {
        const char* const end = _text.data() + _text.size();
        for (const char* position = _text.data(); (position = takePlain(position, end)) != end;) {
            const auto begin = static_cast<std::uint32_t>(position - _text.data());
            const char32_t codePoint = decodeNext(position, end);
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
            _classes |= U_MASK(traits.getBidiClass());
            _isWellFormed &= codePoint != replacementCharacter;
        }
    }

    void finish() {
        if (!_items.empty()) {
            endParagraph(static_cast<std::uint32_t>(_text.size()));
        }
        _clusters.finish();
    }

private:
    /// Takes the characters that begin clusters and change at most the script. Returns where another one or
    /// the end of the text follows.
    const char* takePlain(const char* position, const char* end) {
        if (_isAfterSeparator || !_clusters.isBehindSimple()) {
            return position;
        }
        while (position != end) {
            const char* const behindAscii = takePlainAscii(position, end);
            position = takePlainOthers(behindAscii, end);
            if (position == behindAscii) {
                break;
            }
        }
        return position;
    }

    /// The same, up to an ASCII character, unless that comes first.
    const char* takePlainOthers(const char* position, const char* end) {
        std::uint32_t classes = 0;
        const char* next = position;
        for (; next != end; position = next) {
            const char32_t codePoint = decodeNext(next, end);
            const CharacterTraits traits = getTraits(codePoint);
            if (!traits.isPlain()) {
                break;
            }
            const auto begin = static_cast<std::uint32_t>(position - _text.data());
            _clusters.addBase(begin);
            if (!keepsScript(traits)) {
                changeScript(begin, _scripts.resolve(codePoint, traits));
            }
            classes |= U_MASK(traits.getBidiClass());
            if (next != end && static_cast<unsigned char>(*next) < 0x80U) {
                position = next;
                break;
            }
        }
        _classes |= classes;
        return position;
    }

    const char* takePlainAscii(const char* const begin, const char* end) {
        const CharacterTraitsPages::Page& page = getTraitsPage(0);
        std::uint32_t classes = 0;
        const char* position = begin;
        for (; position != end; ++position) {
            const auto byte = static_cast<unsigned char>(*position);
            if (byte >= 0x80U || !page[byte].isPlain() || !keepsScript(page[byte])) {
                break;
            }
            classes |= U_MASK(page[byte].getBidiClass());
        }
        if (position != begin) {
            _clusters.addBases(static_cast<std::size_t>(begin - _text.data()),
                               static_cast<std::size_t>(position - _text.data()));
            _classes |= classes;
        }
        return position;
    }

    bool keepsScript(CharacterTraits traits) const {
        return traits.takesScriptOfOthers() || traits.getScript() == _script;
    }

    bool isSecondOfCrLf(std::uint32_t begin) const {
        return begin > 0 && _text[begin] == '\n' && _text[begin - 1] == '\r';
    }

    void startParagraph(std::uint32_t begin) {
        if (begin > 0) {
            endParagraph(begin);
        }
        _paragraphs.push_back({begin, begin, 0});
        startItem(begin);
    }

    void endParagraph(std::uint32_t end) {
        endItem(end);
        _paragraphs.back().end = end;
        _paragraphs.back().baseLevel = findUniformLevel(_classes, _direction);
        _classes = 0;
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
    ParagraphDirection _direction;
    DirectedParagraphs& _paragraphs;
    TextItems& _items;
    bool& _isWellFormed;
    ClusterFinder _clusters;
    ScriptResolver _scripts;
    UScriptCode _script = USCRIPT_COMMON;
    ScriptCode _scriptCode{"Zyyy"};
    bool _isAfterSeparator = true; ///< the next character starts a paragraph, unless it ends CR LF
    std::uint32_t _classes = 0;    ///< masks of the bidi classes in the paragraph
};

bool hasNoLevels(const DirectedParagraph& paragraph) {
    return paragraph.baseLevel == 0;
}

} // namespace

TextAnalysis analyse(std::string_view text, ParagraphDirection direction) {
    checkLength(text);
    TextAnalysis analysis;
    Scanner scanner(text, direction, analysis);
    scanner.scan();
    scanner.finish();
    const auto& paragraphs = analysis.paragraphs;
    analysis.isPlain = std::all_of(paragraphs.begin(), paragraphs.end(), hasNoLevels);
    if (!analysis.isPlain) {
        raiseLevels(text, direction, analysis);
    }
    return analysis;
}

} // namespace Vell::TextLayout
