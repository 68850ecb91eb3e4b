#include "CodeRanges.h"

namespace Vell::Tool {

std::vector<CodeRange> findMappedRanges(const Gfx::CharMap& map) {
    constexpr unsigned int endOfUnicode = 0x110000;
    std::vector<CodeRange> ranges;
    for (unsigned int code = 0; code < endOfUnicode; ++code) {
        if (map[code].glyphIndex == 0) {
            continue;
        }
        if (!ranges.empty() && ranges.back().last + 1 == code) {
            ranges.back().last = code;
        } else {
            ranges.push_back({code, code});
        }
    }
    return ranges;
}

} // namespace Vell::Tool
