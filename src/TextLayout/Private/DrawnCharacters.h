#pragma once

#include <Gfx/Public/CharMap.h>

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace Vell::TextLayout {

/// The characters that a font has and that cannot be emoji, whatever follows them. The answers are found for
/// 256 characters at a time and kept. The owner serialises all calls.
class DrawnCharacters {
public:
    static constexpr std::size_t pageSize = 256;
    using Page = std::array<bool, pageSize>;

    /// `charMap` must outlive the object.
    explicit DrawnCharacters(const Gfx::CharMap& charMap)
        : _charMap(charMap) {}

    bool has(char32_t character) { return getPage(character / pageSize)[character % pageSize]; }

    /// Of the characters from `number` times pageSize on. Valid as long as the object.
    const Page& getPage(std::size_t number) {
        return number < _pages.size() && _pages[number] ? *_pages[number] : addPage(number);
    }

private:
    const Page& addPage(std::size_t number);

    const Gfx::CharMap& _charMap;
    std::vector<std::unique_ptr<const Page>> _pages; // null until they are needed
};

} // namespace Vell::TextLayout
