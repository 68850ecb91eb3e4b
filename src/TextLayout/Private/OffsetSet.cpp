#include <TextLayout/Private/OffsetSet.h>

namespace Vell::TextLayout {

std::uint32_t OffsetSet::findUpTo(std::uint32_t offset) const {
    std::size_t word = offset / wordBits;
    std::uint64_t bits = _words[word] & (getBit(offset) | (getBit(offset) - 1));
    while (bits == 0 && word > 0) {
        bits = _words[--word];
    }
    if (bits == 0) {
        return 0;
    }
    const auto highest = static_cast<std::uint32_t>(63 - __builtin_clzll(bits));
    return static_cast<std::uint32_t>(word) * wordBits + highest;
}

std::uint32_t OffsetSet::findFrom(std::uint32_t offset, std::uint32_t none) const {
    std::size_t word = offset / wordBits;
    if (word >= _words.size()) {
        return none;
    }
    std::uint64_t bits = _words[word] & ~(getBit(offset) - 1);
    while (bits == 0 && ++word < _words.size()) {
        bits = _words[word];
    }
    return bits == 0 ? none
                     : static_cast<std::uint32_t>(word) * wordBits +
                           static_cast<std::uint32_t>(__builtin_ctzll(bits));
}

std::uint32_t OffsetSet::count(std::uint32_t begin, std::uint32_t end) const {
    std::uint32_t sum = 0;
    while (begin < end) {
        const std::uint32_t wordEnd = (begin / wordBits + 1) * wordBits;
        std::uint64_t bits = _words[begin / wordBits] & ~(getBit(begin) - 1);
        if (end < wordEnd) {
            bits &= getBit(end) - 1;
        }
        sum += static_cast<std::uint32_t>(__builtin_popcountll(bits));
        begin = wordEnd;
    }
    return sum;
}

} // namespace Vell::TextLayout
