#include <support/OpenedFont.h>

#include <support/FontBuilder.h>

#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeTypeMemory.h>

#include FT_SYSTEM_H

#include <gmock/gmock.h>

#include <cstring>
#include <limits>
#include <optional>

namespace Vell::FontLoaders {
namespace {

using Testing::Bytes;
using Testing::ByteWriter;
using Testing::OpenedFont;

constexpr auto maxBlock = static_cast<long>(openingBounds.block);
constexpr auto maxRenderingBlock = static_cast<long>(renderingBounds.block);

/// Calls the allocator as FreeType does, and frees its blocks at the end.
class Heap {
public:
    /// Allocates a block. Returns false if the allocator refuses.
    bool take(long size) {
        _blocks.push_back(_memory->alloc(_memory, size));
        return _blocks.back() != nullptr;
    }
    bool resizeLast(long size) {
        void* const block = _memory->realloc(_memory, 0, size, _blocks.back());
        _blocks.back() = block != nullptr ? block : _blocks.back();
        return block != nullptr;
    }
    void* getLast() const { return _blocks.back(); }
    void freeLast() {
        _memory->free(_memory, _blocks.back());
        _blocks.pop_back();
    }
    ~Heap() {
        for (void* const block : _blocks) {
            _memory->free(_memory, block);
        }
    }

private:
    OpenedFont _font{Testing::FontBuilder().build()};
    FT_Memory _memory = _font->memory;
    std::vector<void*> _blocks;
};

/// A web font of 644 bytes with one table that claims to unpack to `size` bytes.
Bytes makeWebFont(std::uint32_t size) {
    constexpr std::uint32_t fileSize = 644;
    constexpr std::uint32_t headerSize = 44 + 20;
    ByteWriter writer;
    writer.addText("wOFF");
    writer.addU32(0x00010000);
    writer.addU32(fileSize);
    writer.addU16(1); // tables
    writer.addU16(0);
    writer.addU32(12 + 16 + size);
    writer.addZeros(24); // version, metadata, private data
    writer.addText("glyf");
    writer.addU32(headerSize);
    writer.addU32(fileSize - headerSize);
    writer.addU32(size);
    writer.addU32(0);
    writer.addZeros(fileSize - headerSize);
    return writer.getBytes();
}

std::string getOpeningError(const Bytes& file) {
    try {
        OpenedFont font(file);
    } catch (const FreeTypeException& error) {
        return error.what();
    }
    return "opened";
}

} // namespace

TEST(FreeTypeMemory, RefusesBlocksAboveTheDocumentedSize) {
    Heap heap;
    const FreeTypeOperation operation(openingBounds);
    EXPECT_TRUE(heap.take(maxBlock));
    EXPECT_FALSE(heap.take(maxBlock + 1));
    EXPECT_FALSE(heap.take(std::numeric_limits<long>::max()));
    EXPECT_FALSE(heap.take(-1));
}

TEST(FreeTypeMemory, RefusesOnlyTheLargestBlocksOutsideAnOperation) {
    Heap heap;
    EXPECT_TRUE(heap.take(maxRenderingBlock));
    EXPECT_FALSE(heap.take(maxRenderingBlock + 1));
}

TEST(FreeTypeMemory, RefusesToGrowABlockAboveTheDocumentedSizeAndKeepsIt) {
    Heap heap;
    const FreeTypeOperation operation(openingBounds);
    ASSERT_TRUE(heap.take(100));
    std::memset(heap.getLast(), 7, 100);
    EXPECT_FALSE(heap.resizeLast(maxBlock + 1));
    EXPECT_TRUE(heap.resizeLast(maxBlock));
    EXPECT_EQ(static_cast<unsigned char*>(heap.getLast())[99], 7);
}

TEST(FreeTypeMemory, HoldsTheLargestGlyphInEveryRenderMode) {
    constexpr long pixels = 1L << 28;
    Heap heap;
    const FreeTypeOperation operation(renderingBounds);
    EXPECT_TRUE(heap.take(4 * pixels)) << "a coloured bitmap";
    EXPECT_FALSE(heap.take(4 * pixels + 1));
    heap.freeLast();
    heap.freeLast();
    EXPECT_TRUE(heap.take(3 * pixels)) << "an LCD bitmap";
    EXPECT_TRUE(heap.take(3 * pixels)) << "and the bitmap that it is joined into";
    EXPECT_FALSE(heap.take(pixels)) << "but no more";
    EXPECT_TRUE(heap.take(pixels / 2));
}

TEST(FreeTypeMemory, DoesNotBoundTheTotalOverManyOperations) {
    static_assert(3 * openingBounds.block > openingBounds.growth);
    Heap heap;
    for (int i = 0; i < 4; ++i) {
        const FreeTypeOperation operation(openingBounds);
        EXPECT_TRUE(heap.take(maxBlock));
    }
    EXPECT_TRUE(heap.take(maxBlock)) << "outside of any operation";
}

TEST(FreeTypeMemory, BoundsTheGrowthWithinOneOperation) {
    Heap heap;
    const FreeTypeOperation operation(openingBounds);
    EXPECT_TRUE(heap.take(maxBlock));
    EXPECT_TRUE(heap.take(maxBlock / 2));
    EXPECT_FALSE(heap.take(maxBlock));
    heap.freeLast(); // the one that was refused
    heap.freeLast();
    EXPECT_TRUE(heap.take(maxBlock / 2)) << "freed memory can be allocated again";
    EXPECT_FALSE(heap.take(maxBlock));
}

TEST(FreeTypeMemory, CountsOnlyTheGrowthOfABlock) {
    Heap heap;
    const FreeTypeOperation operation(openingBounds);
    EXPECT_TRUE(heap.take(maxBlock / 2));
    EXPECT_TRUE(heap.take(maxBlock));
    EXPECT_TRUE(heap.resizeLast(maxBlock / 4));
    EXPECT_TRUE(heap.take(maxBlock)) << "the block is smaller now";
    EXPECT_FALSE(heap.take(maxBlock / 2));
}

TEST(FreeTypeMemory, DoesNotCreditOlderBlocksThatAreFreed) {
    Heap heap;
    ASSERT_TRUE(heap.take(maxBlock));
    const FreeTypeOperation operation(openingBounds);
    heap.freeLast();
    EXPECT_TRUE(heap.take(maxBlock));
    EXPECT_TRUE(heap.take(maxBlock / 2));
    EXPECT_FALSE(heap.take(maxBlock));
}

TEST(FreeTypeMemory, CountsANestedOperationSeparately) {
    Heap heap;
    const FreeTypeOperation outer(openingBounds);
    EXPECT_TRUE(heap.take(maxBlock));
    EXPECT_TRUE(heap.take(maxBlock / 2));
    {
        const FreeTypeOperation inner(openingBounds);
        EXPECT_TRUE(heap.take(maxBlock));
    }
    EXPECT_FALSE(heap.take(maxBlock)) << "the outer operation continues";
    EXPECT_TRUE(heap.take(maxBlock / 4));
}

TEST(FreeTypeMemory, ReturnsToTheBoundsOfTheOuterOperation) {
    Heap heap;
    const FreeTypeOperation outer(openingBounds);
    {
        const FreeTypeOperation inner(renderingBounds);
        EXPECT_TRUE(heap.take(maxRenderingBlock));
    }
    EXPECT_FALSE(heap.take(maxBlock + 1));
}

TEST(FreeTypeMemory, BoundsTheMemoryOfGlyphs) {
    Heap heap;
    const FreeTypeOperation operation(openingBounds);
    const FreeTypeGlyphMemory glyphs;
    EXPECT_TRUE(heap.take(maxBlock));
    EXPECT_FALSE(heap.take(maxBlock + 1));
    EXPECT_TRUE(heap.take(maxBlock / 2));
    EXPECT_FALSE(heap.take(maxBlock)) << "above the growth";
}

TEST(FreeTypeMemory, AllocatesEmptyBlocks) {
    for (const bool isOfGlyph : {false, true}) {
        Heap heap;
        std::optional<FreeTypeGlyphMemory> glyphs;
        if (isOfGlyph) {
            glyphs.emplace();
        }
        ASSERT_TRUE(heap.take(0));
        EXPECT_TRUE(heap.resizeLast(100));
        EXPECT_TRUE(heap.resizeLast(0));
        EXPECT_TRUE(heap.resizeLast(10));
    }
}

TEST(FreeTypeMemory, ResizesAndFreesBlocksOfEitherKindAnywhere) {
    Heap heap;
    const auto growLast = [&](std::size_t last) {
        EXPECT_TRUE(heap.resizeLast(5000));
        EXPECT_EQ(static_cast<unsigned char*>(heap.getLast())[last], 9);
    };
    for (const long size : {1L, 8L, 24L, 1000L}) {
        const auto last = static_cast<std::size_t>(size - 1);
        ASSERT_TRUE(heap.take(size));
        std::memset(heap.getLast(), 9, static_cast<std::size_t>(size));
        {
            const FreeTypeGlyphMemory glyphs;
            growLast(last);
            heap.freeLast();
            ASSERT_TRUE(heap.take(size));
            std::memset(heap.getLast(), 9, static_cast<std::size_t>(size));
        }
        growLast(last);
        heap.freeLast();
    }
}

TEST(FreeTypeMemory, AllocatesWhenANullBlockIsResized) {
    const OpenedFont font{Testing::FontBuilder().build()};
    void* const block = font->memory->realloc(font->memory, 0, 100, nullptr);
    ASSERT_NE(block, nullptr);
    font->memory->free(font->memory, block);
    font->memory->free(font->memory, nullptr);
}

TEST(FreeTypeMemory, KeepsASmallWebFontFromClaimingAGigabyte) {
    const Bytes file = makeWebFont(1U << 30U);
    EXPECT_EQ(file.size(), 644U);
    EXPECT_EQ(getOpeningError(file), "FT_Open_Face() failed: out of memory (error 64)");
}

TEST(FreeTypeMemory, LeavesWebFontsOfOrdinarySizeToFreeType) {
    EXPECT_EQ(getOpeningError(makeWebFont(1U << 20U)), "FT_Open_Face() failed: broken table (error 8)");
}

} // namespace Vell::FontLoaders
