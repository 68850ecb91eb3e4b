#include <Gfx/Public/CharMap.h>

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <utility>
#include <vector>

namespace Vell::Gfx {
namespace {

using Glyph = CharMap::GlyphIndexWithAdvance;

const Glyph defaultGlyph(0, 0.25F);

TEST(CharMap, ReturnsTheDefaultWhenEmpty) {
    const CharMap map(Glyph(7, 0.5F));
    EXPECT_EQ(map.size(), 0U);
    for (const unsigned int code : {0U, 65U, 0xFFFFU, 0x10FFFFU, 0x110000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(map[code], Glyph(7, 0.5F)) << code;
    }
}

static_assert(std::is_convertible_v<CharMap::GlyphIndexWithAdvance, CharMap>);

TEST(CharMap, ReturnsTheInsertedEntry) {
    CharMap map(defaultGlyph);
    map.insert('A', Glyph(1, 0.6F), true);
    EXPECT_EQ(map['A'].glyphIndex, 1);
    EXPECT_EQ(map['A'].advance, 0.6F);
    EXPECT_EQ(map['B'], defaultGlyph) << "a neighbour on the same page";
    EXPECT_EQ(map['A' + 256], defaultGlyph) << "the same place on another page";
    EXPECT_EQ(map.size(), 1U);
}

TEST(CharMap, ReplacesAnEntryOnRequest) {
    for (const unsigned int code : {65U, 0xFFFFFFFFU}) {
        CharMap map(defaultGlyph);
        map.insert(code, Glyph(1, 0.1F), true);
        map.insert(code, Glyph(2, 0.2F), true);
        EXPECT_EQ(map[code], Glyph(2, 0.2F));
        EXPECT_EQ(map.size(), 1U);
    }
}

TEST(CharMap, KeepsAnEntryOnRequest) {
    for (const unsigned int code : {65U, 0xFFFFFFFFU}) {
        CharMap map(defaultGlyph);
        map.insert(code, Glyph(1, 0.1F), false);
        map.insert(code, Glyph(2, 0.2F), false);
        EXPECT_EQ(map[code], Glyph(1, 0.1F));
        EXPECT_EQ(map.size(), 1U);
    }
}

TEST(CharMap, CountsAnEntryThatEqualsTheDefault) {
    CharMap map(defaultGlyph);
    map.insert('A', defaultGlyph, true);
    EXPECT_EQ(map.size(), 1U);
    map.insert('A', Glyph(3, 1), false);
    EXPECT_EQ(map['A'], defaultGlyph);
}

TEST(CharMap, MapsEveryKindOfCode) {
    const std::vector<unsigned int> codes = {
        0,        1,          63,         64,         127,        128,       191,      192,
        255,      256,        0xD800,     0xF041,     0xFFFF,     0x10000,   0x10FFFF, 0x110000,
        0x1100FF, 0x7FFFFFFF, 0x80000000, 0xFFFFFF00, 0xFFFFFFFE, 0xFFFFFFFF};
    CharMap map(defaultGlyph);
    for (std::size_t i = 0; i < codes.size(); ++i) {
        map.insert(codes[i], Glyph(static_cast<unsigned short>(i + 1), static_cast<float>(i)), true);
    }
    EXPECT_EQ(map.size(), codes.size());
    for (std::size_t i = 0; i < codes.size(); ++i) {
        EXPECT_EQ(map[codes[i]].glyphIndex, i + 1) << codes[i];
    }
    EXPECT_EQ(map[2], defaultGlyph);
    EXPECT_EQ(map[0x110001], defaultGlyph);
    EXPECT_EQ(map[0xFFFFFFFD], defaultGlyph);
}

TEST(CharMap, FillsAWholePageInAnyOrder) {
    for (const unsigned int step : {1U, 255U, 97U}) {
        CharMap map(defaultGlyph);
        for (unsigned int i = 0; i < 256; ++i) {
            const unsigned int code = i * step % 256;
            map.insert(0x400 + code, Glyph(static_cast<unsigned short>(code + 1), 0), true);
        }
        for (unsigned int code = 0; code < 256; ++code) {
            ASSERT_EQ(map[0x400 + code].glyphIndex, code + 1) << step;
        }
        EXPECT_EQ(map.size(), 256U);
    }
}

TEST(CharMap, IsIndependentOfItsCopies) {
    CharMap map(defaultGlyph);
    map.insert('A', Glyph(1, 1), true);
    map.insert(0xFFFFFFFF, Glyph(2, 2), true);
    CharMap copy = map;
    copy.insert('A', Glyph(9, 9), true);
    copy.insert('B', Glyph(8, 8), true);
    EXPECT_EQ(map['A'], Glyph(1, 1));
    EXPECT_EQ(map['B'], defaultGlyph);
    EXPECT_EQ(map.size(), 2U);
    EXPECT_EQ(copy.size(), 3U);
    const CharMap moved = std::move(copy);
    EXPECT_EQ(moved['A'], Glyph(9, 9));
    EXPECT_EQ(moved[0xFFFFFFFF], Glyph(2, 2));
}

/// Codes like those of fonts: some runs, some single codes, and some beyond Unicode.
unsigned int drawCode(std::mt19937& random) {
    switch (random() % 4) {
    case 0:
        return static_cast<unsigned int>(random() % 0x300);
    case 1:
        return static_cast<unsigned int>(0x4E00 + random() % 0x100);
    case 2:
        return static_cast<unsigned int>(random() % 0x110000);
    default:
        return 0x10FF80U + static_cast<unsigned int>(random() % 0x100) +
               static_cast<unsigned int>(random() % 4) * 0x3FC00000U;
    }
}

TEST(CharMap, BehavesLikeAnOrderedMap) {
    for (unsigned int seed = 1; seed <= 5; ++seed) {
        std::mt19937 random(seed);
        CharMap map(defaultGlyph);
        std::map<unsigned int, Glyph> model;
        for (int step = 0; step < 5000; ++step) {
            const unsigned int code = drawCode(random);
            const Glyph glyph(static_cast<unsigned short>(random()), static_cast<float>(random() % 1000));
            const bool isReplacing = random() % 2 == 0;
            map.insert(code, glyph, isReplacing);
            const auto [entry, isNew] = model.emplace(code, glyph);
            if (!isNew && isReplacing) {
                entry->second = glyph;
            }
            ASSERT_EQ(map.size(), model.size());
        }
        for (const auto& [code, glyph] : model) {
            ASSERT_EQ(map[code], glyph) << code;
        }
        for (int probe = 0; probe < 20000; ++probe) {
            const unsigned int code = drawCode(random);
            const auto found = model.find(code);
            ASSERT_EQ(map[code], found != model.end() ? found->second : defaultGlyph) << code;
        }
    }
}

} // namespace
} // namespace Vell::Gfx
