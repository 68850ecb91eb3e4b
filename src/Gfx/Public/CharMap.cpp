#include <Gfx/Public/CharMap.h>

#include <algorithm>
#include <utility>

namespace Vell::Gfx {

CharMap::CharMap(GlyphIndexWithAdvance defaultGlyph)
    : _defaultGlyph(defaultGlyph) {}

void CharMap::insertAnywhere(unsigned int code, GlyphIndexWithAdvance glyph, bool replaceExisting) {
    Page& page = getOrMakePage(code);
    if (!page.contains(code)) {
        page.add(code, glyph, _defaultGlyph);
        ++_size;
        followTail(code, page);
    } else if (replaceExisting) {
        page.entries[page.getSlot(code)] = glyph;
    }
}

void CharMap::Page::add(unsigned int code, GlyphIndexWithAdvance glyph, GlyphIndexWithAdvance defaultGlyph) {
    prepareToAdd(defaultGlyph);
    const auto place = entries.begin() + static_cast<std::ptrdiff_t>(getSlot(code));
    if (isDirect) {
        *place = glyph;
    } else {
        entries.insert(place, glyph);
    }
    mark(code);
}

bool CharMap::Page::isHighest(unsigned int code) const {
    const unsigned int word = getWord(code);
    return mapped[word] >> 1 < getBit(code) &&
           std::all_of(mapped.begin() + word + 1, mapped.end(), [](std::uint64_t bits) { return bits == 0; });
}

void CharMap::Page::makeDirect(GlyphIndexWithAdvance defaultGlyph) {
    std::vector<GlyphIndexWithAdvance> all(std::size_t{1} << pageBits, defaultGlyph);
    auto entry = entries.begin();
    for (unsigned int code = 0; code != all.size(); ++code) {
        if (contains(code)) {
            all[code] = *entry++;
        }
    }
    entries = std::move(all);
    isDirect = true;
}

/// Releases a page's spare capacity once insertion moves on to another page.
void CharMap::followTail(unsigned int code, const Page& page) {
    if (!page.isHighest(code) || code >> pageBits >= unicodePages) {
        return;
    }
    const std::size_t index = _directory[code >> pageBits];
    if (_tail.isKnown && _tail.page != index) {
        _pages[_tail.page].entries.shrink_to_fit();
    }
    _tail = {true, code, index};
}

const CharMap::Page* CharMap::findPageBeyondUnicode(unsigned int number) const {
    const auto found = _pagesBeyondUnicode.find(number);
    return found != _pagesBeyondUnicode.end() ? &found->second : nullptr;
}

CharMap::Page& CharMap::getOrMakePage(unsigned int code) {
    const unsigned int number = code >> pageBits;
    if (number >= unicodePages) {
        return _pagesBeyondUnicode[number];
    }
    if (number >= _directory.size()) {
        _directory.resize(number + 1, noPage);
    }
    if (_directory[number] == noPage) {
        constexpr std::size_t typicalCount = 32; // few pages of a font have fewer entries
        Page page;
        page.entries.reserve(typicalCount);
        _pages.push_back(std::move(page));
        _directory[number] = static_cast<std::uint16_t>(_pages.size() - 1);
    }
    return _pages[_directory[number]];
}

} // namespace Vell::Gfx
