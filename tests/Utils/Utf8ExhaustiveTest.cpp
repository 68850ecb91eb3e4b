#include <Utils/Public/Utf8.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>

namespace Vell {
namespace {

struct ByteRange {
    unsigned char min;
    unsigned char max;
};

/// The well-formed sequences, byte by byte, as the Unicode standard tabulates them.
struct Row {
    std::size_t length;
    ByteRange bytes[4];
};
constexpr Row rows[] = {
    {1, {{0x00, 0x7F}}},
    {2, {{0xC2, 0xDF}, {0x80, 0xBF}}},
    {3, {{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}}},
    {3, {{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}},
};

struct Decoded {
    unsigned int codePoint;
    std::size_t length;
};

std::size_t countMatchingBytes(const Row& row, const unsigned char* text, std::size_t size) {
    std::size_t matching = 0;
    while (matching < row.length && matching < size && text[matching] >= row.bytes[matching].min &&
           text[matching] <= row.bytes[matching].max) {
        ++matching;
    }
    return matching;
}

unsigned int assemble(const unsigned char* text, std::size_t length) {
    switch (length) {
    case 1:
        return text[0];
    case 2:
        return (text[0] - 0xC0U) * 0x40 + (text[1] - 0x80U);
    case 3:
        return (text[0] - 0xE0U) * 0x1000 + (text[1] - 0x80U) * 0x40 + (text[2] - 0x80U);
    default:
        return (text[0] - 0xF0U) * 0x40000 + (text[1] - 0x80U) * 0x1000 + (text[2] - 0x80U) * 0x40 +
               (text[3] - 0x80U);
    }
}

/// Decodes the first character exactly as the standard defines it: a well-formed sequence, or else the
/// longest prefix of one, at least one byte.
Decoded decodePlainly(const unsigned char* text, std::size_t size) {
    std::size_t longest = 1;
    for (const Row& row : rows) {
        const std::size_t matching = countMatchingBytes(row, text, size);
        if (matching == row.length) {
            return {assemble(text, row.length), row.length};
        }
        longest = matching > longest ? matching : longest;
    }
    return {0xFFFD, longest};
}

bool isDecodedAlike(const unsigned char* text, std::size_t size) {
    const char* position = reinterpret_cast<const char*>(text);
    const char* const end = position + size;
    while (position != end) {
        const auto* const bytes = reinterpret_cast<const unsigned char*>(position);
        const Decoded expected = decodePlainly(bytes, static_cast<std::size_t>(end - position));
        const char* const expectedPosition = position + expected.length;
        if (decodeUtf8(position, end) != expected.codePoint || position != expectedPosition) {
            return false;
        }
    }
    return true;
}

/// Checks every text of `size` bytes, each in a block of exactly that size.
void expectAllDecodedAlike(std::size_t size) {
    const std::unique_ptr<unsigned char[]> text(new unsigned char[size]);
    std::size_t mismatches = 0;
    for (std::uint32_t number = 0; number < std::uint32_t(1) << (8 * size); ++number) {
        for (std::size_t i = 0; i < size; ++i) {
            text[i] = static_cast<unsigned char>(number >> (8 * i));
        }
        mismatches += isDecodedAlike(text.get(), size) ? 0 : 1;
    }
    EXPECT_EQ(mismatches, 0U);
}

TEST(Utf8Exhaustive, OneByte) {
    expectAllDecodedAlike(1);
}

TEST(Utf8Exhaustive, TwoBytes) {
    expectAllDecodedAlike(2);
}

TEST(Utf8Exhaustive, ThreeBytes) {
    expectAllDecodedAlike(3);
}

TEST(Utf8Exhaustive, EveryCodePoint) {
    std::size_t mismatches = 0;
    for (const unsigned int lead : {0xF0U, 0xF1U, 0xF2U, 0xF3U, 0xF4U}) {
        for (unsigned int rest = 0; rest < 0x40000; ++rest) {
            const unsigned char text[] = {static_cast<unsigned char>(lead),
                                          static_cast<unsigned char>(0x80 + (rest >> 12)),
                                          static_cast<unsigned char>(0x80 + (rest >> 6 & 0x3F)),
                                          static_cast<unsigned char>(0x80 + (rest & 0x3F))};
            mismatches += isDecodedAlike(text, sizeof(text)) ? 0 : 1;
        }
    }
    EXPECT_EQ(mismatches, 0U);
}

TEST(Utf8Exhaustive, RandomTexts) {
    constexpr unsigned char telling[] = {0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0,
                                         0xBF, 0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC,
                                         0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5};
    std::mt19937 random(7);
    for (int round = 0; round < 200000; ++round) {
        const std::size_t size = 1 + random() % 12;
        const std::unique_ptr<unsigned char[]> text(new unsigned char[size]);
        for (std::size_t i = 0; i < size; ++i) {
            text[i] = telling[random() % sizeof(telling)];
        }
        ASSERT_TRUE(isDecodedAlike(text.get(), size)) << round;
    }
}

} // namespace
} // namespace Vell
