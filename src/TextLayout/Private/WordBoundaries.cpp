#include <TextLayout/Private/WordBoundaries.h>

#include <TextLayout/Public/TextBoundaries.h>

namespace Vell::TextLayout {

WordBoundaries::WordBoundaries(std::string_view text)
    : begins(text.size())
    , ends(text.size()) {
    std::size_t begin = 0;
    for (const WordBoundary& boundary : findWordBoundaries(text)) {
        if (boundary.isBehindWord) {
            begins.insert(begin);
            ends.insert(boundary.offset);
        }
        begin = boundary.offset;
    }
}

} // namespace Vell::TextLayout
