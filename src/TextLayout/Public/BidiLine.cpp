#include <TextLayout/Public/BidiLine.h>

#include <TextLayout/Private/BidiLevels.h>
#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/Utf16Text.h>
#include <TextLayout/Private/VisualOrder.h>
#include <Utils/Public/Utf8.h>

namespace Vell::TextLayout {

namespace {

BidiLevels getPlainLevels(std::string_view text) {
    BidiLevels levels{{}, {0}};
    levels.characters.reserve(text.size());
    const char* const end = text.data() + text.size();
    for (const char* position = text.data(); position != end;) {
        const CharacterTraits traits = getTraits(decodeUtf8(position, end));
        levels.characters.push_back(traits.isRemovedFromLine() ? removedFromLine : BidiLevel{0});
    }
    return levels;
}

BidiLevels findLevels(std::string_view text, ParagraphDirection direction) {
    checkLength(text);
    return isPlainText(text, direction) ? getPlainLevels(text) : resolveLevels(toUtf16(text), direction);
}

std::vector<std::uint32_t> orderVisually(const std::vector<BidiLevel>& levels) {
    std::vector<std::uint32_t> present;
    std::vector<BidiLevel> presentLevels;
    present.reserve(levels.size());
    presentLevels.reserve(levels.size());
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (levels[i] != removedFromLine) {
            present.push_back(static_cast<std::uint32_t>(i));
            presentLevels.push_back(levels[i]);
        }
    }
    std::vector<std::uint32_t> visual;
    reorderVisually(presentLevels.data(), presentLevels.size(), visual);
    for (std::uint32_t& place : visual) {
        place = present[place];
    }
    return visual;
}

} // namespace

BidiLine::BidiLine(std::string_view text, ParagraphDirection direction) {
    BidiLevels levels = findLevels(text, direction);
    _baseLevel = levels.paragraphs.front();
    _levels = std::move(levels.characters);
    _visualOrder = orderVisually(_levels);
}

} // namespace Vell::TextLayout
