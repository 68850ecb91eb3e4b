#pragma once

#include <Utils/Public/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace Vell::Gfx {

/// Maps character codes to glyphs and their advances. Every character that is drawn is looked up here.
///
/// A lookup takes three loads and a few arithmetic instructions, however large the map is. Codes are stored
/// in pages of 256. A page stores only the mapped codes, 8 bytes for each entry plus 64 bytes for the page,
/// until half of its codes are mapped; then it stores an entry for every code. So memory grows with the
/// number of mapped codes, not with their values. Any 32-bit code may be mapped; codes beyond Unicode take an
/// additional hash lookup.
///
/// Threads: concurrent lookups are safe. insert needs exclusive access.
class VELL_API CharMap {
public:
    /// A glyph and its horizontal advance, in ems.
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

    /// Makes an empty map, which returns `defaultGlyph` for every code.
    CharMap(GlyphIndexWithAdvance defaultGlyph);

    /// The entry for `code`, or the default one.
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

    /// The number of mapped codes.
    std::size_t size() const { return _size; }

    /// Maps `code`. If it is mapped already, the new entry replaces the old one only if `replaceExisting` is
    /// true.
    void insert(unsigned int code, GlyphIndexWithAdvance glyph, bool replaceExisting) {
        if (_tail.canAppend(code)) {
            _pages[_tail.page].append(code, glyph, _defaultGlyph);
            _tail.highestCode = code;
            ++_size;
        } else {
            insertAnywhere(code, glyph, replaceExisting);
        }
    }

private:
    static constexpr std::size_t directFrom = 128; // codes of a page

    /// The mapped codes among 256 neighbours: one bit for each code, and the entries of the set bits in
    /// order. A page that is at least half full is direct: it has an entry for every code, the default one
    /// where nothing is mapped.
    struct Page {
        std::array<std::uint64_t, 4> mapped{};
        std::uint32_t slotsBefore = 0; // one byte per word: set bits in the words before it, at most 192
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
        /// Adds a code above all others of the page.
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

    /// The page that was last added to, and its highest code. Charmaps are read in ascending order, so the
    /// next code usually goes to the end of this page.
    struct Tail {
        bool canAppend(unsigned int code) const {
            return code > highestCode && code >> pageBits == highestCode >> pageBits && isKnown;
        }

        bool isKnown = false;
        unsigned int highestCode = 0;
        std::size_t page = 0; // index in _pages
    };

    static constexpr unsigned int pageBits = 8;
    static constexpr unsigned int unicodePages = 0x110000U >> pageBits;
    static constexpr std::uint16_t noPage = 0xFFFF;

    /// Written out, because in a build for generic x86-64 the compiler's own function is a library call.
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
    std::vector<std::uint16_t> _directory; // by page number, up to the highest page in use
    std::vector<Page> _pages;              // at most unicodePages
    std::unordered_map<unsigned int, Page> _pagesBeyondUnicode;
};

} // namespace Vell::Gfx
