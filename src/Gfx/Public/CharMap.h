#pragma once

#include <Utils/Public/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace Vell::Gfx {

/// Maps character codes to glyphs with their advances: the table that every drawn character goes through.
///
/// A lookup is three loads and a few arithmetic instructions at any size. Codes are kept in pages of 256; a
/// page stores only what is mapped (8 bytes an entry, plus 64 bytes a page) until half of it is, and then
/// everything, so the memory follows the number of mapped codes and not their values. Any 32-bit code may be
/// mapped; those beyond Unicode cost a hash lookup more.
///
/// Threads: concurrent lookups are safe; insert needs exclusive access.
class VELL_API CharMap {
public:
    /// A glyph and its horizontal advance in ems.
    struct GlyphIndexWithAdvance {
        unsigned short glyphIndex;
        float advance;

        GlyphIndexWithAdvance(unsigned short index, float glyphAdvance)
            : glyphIndex(index)
            , advance(glyphAdvance) {}

        friend bool operator==(const GlyphIndexWithAdvance& lhs, const GlyphIndexWithAdvance& rhs) {
            return lhs.glyphIndex == rhs.glyphIndex && lhs.advance == rhs.advance;
        }
        friend bool operator!=(const GlyphIndexWithAdvance& lhs, const GlyphIndexWithAdvance& rhs) {
            return !(lhs == rhs);
        }
    };

    /// An empty map that answers `defaultGlyph` for every code.
    CharMap(GlyphIndexWithAdvance defaultGlyph);

    /// The entry of `code`, or the default one.
    GlyphIndexWithAdvance operator[](unsigned int code) const {
        const Page* const page = findPage(code);
        if (page == nullptr) {
            return _defaultGlyph;
        }
        if (page->isDirect) {
            return page->entries[code & 0xFFU];
        }
        return page->contains(code) ? page->entries[page->getSlot(code)] : _defaultGlyph;
    }

    /// How many codes are mapped.
    std::size_t size() const { return _size; }

    /// Maps `code`. When it is mapped already, `replaceExisting` decides which entry stays: true the new one,
    /// false the old one.
    void insert(unsigned int code, GlyphIndexWithAdvance glyph, bool replaceExisting) {
        if (_tail.isFollowedBy(code)) {
            _pages[_tail.page].append(code, glyph, _defaultGlyph);
            _tail.highestCode = code;
            ++_size;
        } else {
            insertAnywhere(code, glyph, replaceExisting);
        }
    }

private:
    static constexpr std::size_t directFrom = 128; // codes of a page

    /// The mapped codes among 256 neighbours: one bit a code, and the entries of the set bits in order. A
    /// page that is at least half full is direct: it has an entry for every code, the default one where
    /// nothing is mapped.
    struct Page {
        std::array<std::uint64_t, 4> mapped{};
        std::uint32_t slotsBefore = 0; // a byte a word: set bits in the words before it, at most 192
        bool isDirect = false;
        std::vector<GlyphIndexWithAdvance> entries;

        static unsigned int getWord(unsigned int code) { return code >> 6 & 3U; }
        static std::uint64_t getBit(unsigned int code) { return std::uint64_t(1) << (code & 63U); }

        bool contains(unsigned int code) const { return (mapped[getWord(code)] & getBit(code)) != 0; }
        std::size_t getSlot(unsigned int code) const {
            if (isDirect) {
                return code & 0xFFU;
            }
            const unsigned int word = getWord(code);
            return (slotsBefore >> 8 * word & 0xFFU) + countBits(mapped[word] & (getBit(code) - 1));
        }
        /// Adds a code that is not mapped.
        void add(unsigned int code, GlyphIndexWithAdvance glyph, GlyphIndexWithAdvance defaultGlyph);
        /// add of a code above all others of the page.
        void append(unsigned int code, GlyphIndexWithAdvance glyph, GlyphIndexWithAdvance defaultGlyph) {
            prepareToAdd(defaultGlyph);
            if (isDirect) {
                entries[code & 0xFFU] = glyph;
            } else {
                entries.emplace_back(glyph.glyphIndex, glyph.advance);
            }
            mark(code);
        }
        void prepareToAdd(GlyphIndexWithAdvance defaultGlyph) {
            if (!isDirect && entries.size() + 1 == directFrom) {
                makeDirect(defaultGlyph);
            }
        }
        bool isHighest(unsigned int code) const;
        void makeDirect(GlyphIndexWithAdvance defaultGlyph);
        void mark(unsigned int code) {
            constexpr std::uint32_t oneInEachWordAfterTheFirst = 0x01010100;
            mapped[getWord(code)] |= getBit(code);
            slotsBefore += oneInEachWordAfterTheFirst << 8 * getWord(code);
        }
    };

    /// The highest code of the page that was last added to: charmaps are read in ascending order.
    struct Tail {
        bool isFollowedBy(unsigned int code) const {
            return code > highestCode && code >> pageBits == highestCode >> pageBits && isKnown;
        }

        bool isKnown = false;
        unsigned int highestCode = 0;
        std::size_t page = 0; // index in _pages
    };

    static constexpr unsigned int pageBits = 8;
    static constexpr unsigned int unicodePages = 0x110000U >> pageBits;
    static constexpr std::uint16_t noPage = 0xFFFF;

    /// Written out because a build for any x86-64 machine would call a library function instead.
    static unsigned int countBits(std::uint64_t bits) {
        bits -= bits >> 1 & 0x5555555555555555U;
        bits = (bits & 0x3333333333333333U) + (bits >> 2 & 0x3333333333333333U);
        bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0FU;
        return static_cast<unsigned int>(bits * 0x0101010101010101U >> 56);
    }

    const Page* findPage(unsigned int code) const {
        const unsigned int number = code >> pageBits;
        if (number < _directory.size()) {
            const std::uint16_t page = _directory[number];
            return page != noPage ? &_pages[page] : nullptr;
        }
        return number < unicodePages ? nullptr : findPageBeyondUnicode(number);
    }
    const Page* findPageBeyondUnicode(unsigned int number) const;
    void insertAnywhere(unsigned int code, GlyphIndexWithAdvance glyph, bool replaceExisting);
    Page& getOrMakePage(unsigned int code);
    void followTail(unsigned int code, const Page& page);

    GlyphIndexWithAdvance _defaultGlyph;
    std::size_t _size = 0;
    Tail _tail;
    std::vector<std::uint16_t> _directory; // by page number; as long as the highest page in use needs
    std::vector<Page> _pages;              // at most unicodePages
    std::unordered_map<unsigned int, Page> _pagesBeyondUnicode;
};

} // namespace Vell::Gfx
