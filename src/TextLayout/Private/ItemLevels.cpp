#include <TextLayout/Private/ItemLevels.h>

#include <TextLayout/Private/BidiLevels.h>
#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Private/Utf16Text.h>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// Takes items without levels, and makes those with levels.
class ItemDivider {
public:
    ItemDivider(std::string_view text, ParagraphDirection direction, const TextItems& items)
        : _text(text)
        , _direction(direction)
        , _item(items.begin()) {}

    void addParagraph(DirectedParagraph& paragraph) {
        if (paragraph.baseLevel != mixedLevels) {
            addUniform(paragraph);
        } else {
            addMixed(paragraph);
        }
    }

    TextItems finish() { return std::move(_items); }

private:
    void addUniform(const DirectedParagraph& paragraph) {
        do {
            _items.push_back(*_item);
            _items.back().level = paragraph.baseLevel;
        } while (_item++->end < paragraph.end);
    }

    void addMixed(DirectedParagraph& paragraph) {
        const std::string_view text = _text.substr(paragraph.begin, paragraph.end - paragraph.begin);
        toUtf16(text, _units);
        const ParagraphLevels levels = resolveLevels(_units, _direction);
        paragraph.baseLevel = levels.base;
        const char* const end = text.data() + text.size();
        const char* position = text.data();
        BidiLevel current = paragraph.baseLevel;
        for (const BidiLevel level : levels.characters) {
            const auto begin = static_cast<std::uint32_t>(position - _text.data());
            current = level == removedFromLine ? current : level;
            addCharacter(begin, current);
            decodeNext(position, end);
        }
        ++_item;
    }

    void addCharacter(std::uint32_t begin, BidiLevel level) {
        if (begin == _item->end) {
            ++_item;
        }
        if (begin == _item->begin) {
            _items.push_back({begin, _item->end, level, _item->script});
        } else if (level != _items.back().level) {
            _items.back().end = begin;
            _items.push_back({begin, _item->end, level, _item->script});
        }
    }

    std::string_view _text;
    ParagraphDirection _direction;
    TextItems::const_iterator _item;
    TextItems _items;
    std::u16string _units;
};

} // namespace

void raiseLevels(std::string_view text, ParagraphDirection direction, TextAnalysis& analysis) {
    ItemDivider divider(text, direction, analysis.items);
    for (DirectedParagraph& paragraph : analysis.paragraphs) {
        divider.addParagraph(paragraph);
    }
    analysis.items = divider.finish();
    analysis.isPlain = std::all_of(analysis.items.begin(), analysis.items.end(),
                                   [](const TextItem& item) { return item.level == 0; });
}

} // namespace Vell::TextLayout
