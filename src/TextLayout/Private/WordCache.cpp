#include <TextLayout/Private/WordCache.h>

#include <Utils/Public/Hash.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace Vell::TextLayout {

namespace {

template <class Number>
std::uint64_t read(const char* bytes) {
    Number number = 0;
    std::memcpy(&number, bytes, sizeof(number));
    return number;
}

/// The bytes of up to eight. Reads some of them twice, which is faster than to read them one by one.
std::uint64_t readShort(const char* bytes, std::size_t size) {
    if (size >= sizeof(std::uint32_t)) {
        return read<std::uint32_t>(bytes) << 32U | read<std::uint32_t>(bytes + size - sizeof(std::uint32_t));
    }
    if (size >= sizeof(std::uint16_t)) {
        return read<std::uint16_t>(bytes) << 16U | read<std::uint16_t>(bytes + size - sizeof(std::uint16_t));
    }
    return size != 0 ? read<std::uint8_t>(bytes) : 0;
}

std::size_t hashText(std::uint32_t plan, std::string_view text) {
    std::uint64_t hash = combineHash(plan, text.size());
    while (text.size() > sizeof(std::uint64_t)) {
        hash = combineHash(hash, read<std::uint64_t>(text.data()));
        text.remove_prefix(sizeof(std::uint64_t));
    }
    return combineHash(hash, readShort(text.data(), text.size()));
}

std::unique_ptr<char[]> copyText(std::string_view text) { // NOLINT(modernize-avoid-c-arrays)
    auto copy = std::make_unique<char[]>(text.size());    // NOLINT(modernize-avoid-c-arrays)
    std::copy(text.begin(), text.end(), copy.get());
    return copy;
}

} // namespace

WordKey::WordKey(std::uint32_t plan, std::string_view text)
    : _plan(plan)
    , _hash(hashText(plan, text))
    , _text(text) {}

WordKey::WordKey(const WordKey& other)
    : _plan(other._plan)
    , _hash(other._hash)
    , _own(copyText(other._text))
    , _text(_own.get(), other._text.size()) {}

std::uint64_t WordCache::countBytes(std::size_t textSize, std::size_t glyphCount) {
    // What an entry takes beside its text and glyphs: the key, the node, the links of two indices and what
    // the allocator adds to three blocks.
    constexpr std::size_t entryBytes = sizeof(WordKey) + sizeof(std::vector<ShapedGlyph>) + 96;
    return entryBytes + textSize + glyphCount * sizeof(ShapedGlyph);
}

bool WordCache::hasRoom(std::size_t textSize, std::size_t glyphCount) const {
    constexpr std::uint64_t largestShare = 4; // a larger part of the budget would cost too many other words
    const std::uint64_t budget = _words.getMaxSizeInBytes();
    return budget == 0 || countBytes(textSize, glyphCount) <= budget / largestShare;
}

void WordCache::put(const WordKey& key, std::size_t textSize, std::vector<ShapedGlyph> glyphs) {
    glyphs.shrink_to_fit();
    if (hasRoom(textSize, glyphs.size())) {
        const std::uint64_t bytes = countBytes(textSize, glyphs.size());
        _words.put(key, {std::move(glyphs), bytes});
    }
}

FontEngine::CacheFigures WordCache::getFigures() const {
    FontEngine::CacheFigures figures;
    figures.entries = _words.size();
    figures.bytes = _words.getEffectiveSizeInBytes();
    figures.evictions = _words.getEvictedCount();
    figures.hits = _words.getHitCount();
    figures.misses = _words.getMissCount();
    figures.maxEntries = _words.getMaxEntries();
    figures.maxBytes = _words.getMaxSizeInBytes();
    return figures;
}

} // namespace Vell::TextLayout
