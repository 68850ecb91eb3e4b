#include <TextLayout/Private/DrawnCharacters.h>

#include <TextLayout/Private/CharacterTraits.h>

#include <utility>

namespace Vell::TextLayout {

const DrawnCharacters::Page& DrawnCharacters::addPage(std::size_t number) {
    auto page = std::make_unique<Page>();
    for (std::size_t i = 0; i != pageSize; ++i) {
        const auto character = static_cast<char32_t>(number * pageSize + i);
        (*page)[i] = _charMap[character].glyphIndex != 0 && !getTraits(character).isEmoji();
    }
    if (number >= _pages.size()) {
        _pages.resize(number + 1);
    }
    _pages[number] = std::move(page);
    return *_pages[number];
}

} // namespace Vell::TextLayout
