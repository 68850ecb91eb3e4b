#include <TextLayout/Private/TextCharacters.h>

#include <algorithm>

namespace Vell::TextLayout {

std::uint32_t findCharacterBefore(std::string_view text, std::uint32_t offset) {
    constexpr std::uint32_t longest = 4;
    for (std::uint32_t start = offset - std::min(offset, longest); start < offset; ++start) {
        if (findCharacterBehind(text.substr(0, offset), start) == offset) {
            return start;
        }
    }
    return offset == 0 ? 0 : offset - 1;
}

} // namespace Vell::TextLayout
