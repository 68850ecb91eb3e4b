#pragma once

#include <FontEngine/FE_CacheFigures.h>
#include <TextLayout/Public/ShapedText.h>
#include <Utils/Public/MRUCache.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// A word as one plan shapes it. A copy owns its text; the original refers to the caller's.
class WordKey {
public:
    WordKey(std::uint32_t plan, std::string_view text);
    WordKey(const WordKey& other);
    WordKey& operator=(const WordKey&) = delete;
    ~WordKey() = default;

    bool operator==(const WordKey& other) const {
        return _hash == other._hash && _plan == other._plan && _text == other._text;
    }
    std::size_t getHash() const { return _hash; }

private:
    std::uint32_t _plan;
    std::size_t _hash;
    std::unique_ptr<char[]> _own; // NOLINT(modernize-avoid-c-arrays)
    std::string_view _text;
};

/// Shaped words within a budget of bytes. Their clusters count from the start of the word. The owner
/// serialises all calls.
class WordCache {
public:
    explicit WordCache(std::uint64_t maxBytes)
        : _words(0, maxBytes) {}

    /// Null if the word is not cached. Valid until the next call of put or clear.
    const std::vector<ShapedGlyph>* find(const WordKey& key) {
        const auto* const node = _words.get(key);
        return node != nullptr ? &node->getValue() : nullptr;
    }
    /// Does nothing if the word is cached already, or if it would take more than a quarter of the budget.
    void put(const WordKey& key, std::size_t textSize, std::vector<ShapedGlyph> glyphs);
    /// Whether put() takes a word of this size.
    bool hasRoom(std::size_t textSize, std::size_t glyphCount) const;
    void clear() { _words.clear(); }

    FontEngine::CacheFigures getFigures() const;

private:
    static std::uint64_t countBytes(std::size_t textSize, std::size_t glyphCount);

    struct Hash {
        std::size_t operator()(const WordKey& key) const { return key.getHash(); }
    };
    struct Equal {
        bool operator()(const WordKey& lhs, const WordKey& rhs) const { return lhs == rhs; }
    };

    MRUCache<WordKey, std::vector<ShapedGlyph>, Hash, Equal> _words;
};

} // namespace Vell::TextLayout
