#include <support/FontBuilder.h>
#include <support/GuardedBytes.h>

#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace Vell::FontLoaders::Internal {
namespace {

using Testing::Bytes;
using Testing::FontBuilder;

constexpr std::uint32_t tagOfGlyf = 0x676C7966;

/// The first `length` bytes of a file, followed by unreadable memory.
TableRange findGlyf(const Bytes& file, std::size_t length) {
    const Testing::GuardedBytes start(
        Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length)));
    return findTable({start.data(), start.size()}, tagOfGlyf);
}

Bytes makeFile() {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    return font.build();
}

} // namespace

TEST(SfntTables, AreFoundOnlyIfTheFileContainsThemWhole) {
    const Bytes file = makeFile();
    const TableRange range = findGlyf(file, file.size());
    ASSERT_GT(range.length, 0U);
    for (std::size_t length = 0; length <= file.size(); ++length) {
        const bool isWhole = length >= range.offset + range.length;
        EXPECT_EQ(findGlyf(file, length).length, isWhole ? range.length : 0) << length;
    }
}

TEST(SfntTables, AreThoseOfTheFirstFaceOfACollection) {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    const Bytes file = Testing::buildCollection({font, font});
    const TableRange range = findGlyf(file, file.size());
    EXPECT_GT(range.length, 0U);
    for (std::size_t length = 0; length < range.offset + range.length; ++length) {
        EXPECT_EQ(findGlyf(file, length).length, 0U) << length;
    }
}

TEST(SfntTables, AreNotFoundThroughOffsetsThatOverflow) {
    Bytes file = Testing::buildCollection({FontBuilder()});
    for (const unsigned int lowest : {0xFFU, 0xFCU, 0xF4U, 0xE4U}) {
        std::fill_n(file.begin() + 12, 3, static_cast<unsigned char>(0xFF)); // the offset of the directory
        file[15] = static_cast<unsigned char>(lowest);
        EXPECT_EQ(findGlyf(file, file.size()).length, 0U);
    }
}

} // namespace Vell::FontLoaders::Internal
