#include <TextLayout/Private/ByteSet.h>

namespace Vell::TextLayout {

std::size_t ByteSet::next(std::size_t offset) const {
    const std::size_t from = offset + 1;
    std::uint64_t skipped = (std::uint64_t{1} << (from % wordBits)) - 1;
    for (std::size_t word = from / wordBits; word < _words.size(); ++word) {
        const std::uint64_t bits = _words[word] & ~skipped;
        if (bits != 0) {
            return word * wordBits + static_cast<std::size_t>(__builtin_ctzll(bits));
        }
        skipped = 0;
    }
    return none;
}

std::size_t ByteSet::previous(std::size_t offset) const {
    std::size_t word = offset / wordBits;
    std::uint64_t kept = (std::uint64_t{1} << (offset % wordBits)) - 1;
    while (true) {
        const std::uint64_t bits = _words[word] & kept;
        if (bits != 0) {
            return word * wordBits + (wordBits - 1 - static_cast<std::size_t>(__builtin_clzll(bits)));
        }
        if (word == 0) {
            return none;
        }
        --word;
        kept = ~std::uint64_t{0};
    }
}

std::size_t ByteSet::count() const {
    std::size_t count = 0;
    for (const std::uint64_t word : _words) {
        count += static_cast<std::size_t>(__builtin_popcountll(word));
    }
    return count;
}

std::size_t ByteSet::count(std::size_t begin, std::size_t end) const {
    std::size_t count = 0;
    while (begin < end) {
        const std::size_t wordEnd = (begin / wordBits + 1) * wordBits;
        std::uint64_t bits = _words[begin / wordBits] >> (begin % wordBits) << (begin % wordBits);
        if (end < wordEnd) {
            bits &= (std::uint64_t{1} << (end % wordBits)) - 1;
        }
        count += static_cast<std::size_t>(__builtin_popcountll(bits));
        begin = wordEnd;
    }
    return count;
}

void ByteSet::insertAll(std::size_t begin, std::size_t end) {
    while (begin < end) {
        const std::size_t wordEnd = (begin / wordBits + 1) * wordBits;
        std::uint64_t bits = ~std::uint64_t{0} << (begin % wordBits);
        if (end < wordEnd) {
            bits &= (std::uint64_t{1} << (end % wordBits)) - 1;
        }
        _words[begin / wordBits] |= bits;
        begin = wordEnd;
    }
}

} // namespace Vell::TextLayout
