#include <FontEngine/Private/FE_BitmapRows.h>

#include <FontEngine/Private/FE_GlyphChecks.h>

#include FT_SYSTEM_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

namespace Vell::FontEngine::Internal {

namespace {

constexpr unsigned int subpixels = 3; // bytes per pixel of an LCD row: one each for red, green and blue

/// A bitmap's extent: the width in sub-pixels, the pitch in bytes, and the left bearing in pixels.
struct Extent {
    unsigned int width;
    int pitch;
    int left;
};

Extent widen(Extent extent) {
    if (extent.left <= 0) {
        const int missing = -static_cast<int>(subpixels) * extent.left;
        extent.width += static_cast<unsigned int>(missing);
        extent.pitch += missing;
        extent.left = 0;
    }
    const int extension = static_cast<int>(static_cast<float>(extent.width) * 0.25F);
    extent.width += static_cast<unsigned int>(extension);
    extent.pitch += extension;
    return extent;
}

int roundUpToWords(int pitch) {
    return (pitch + 3) & ~3;
}

/// Fills whole pixels from the left. The last one to three sub-pixels of the width stay empty.
void fillRow(unsigned char* row, unsigned int width, unsigned char coverage) {
    for (unsigned int position = 0; position < width - subpixels; position += subpixels) {
        std::memset(row + position, coverage, subpixels);
    }
}

unsigned char* allocateZeroed(FT_Memory memory, std::size_t bytes) {
    void* const block = memory->alloc(memory, static_cast<long>(std::max<std::size_t>(bytes, 1)));
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    std::memset(block, 0, bytes);
    return static_cast<unsigned char*>(block);
}

} // namespace

void flipRows(FT_Bitmap& bitmap) {
    const auto pitch = static_cast<std::size_t>(std::abs(bitmap.pitch));
    if (bitmap.rows < 2 || pitch == 0 || bitmap.buffer == nullptr) {
        return;
    }
    // FreeType's coordinates have 16 bits, so a glyph has at most 65,535 rows.
    auto upper = std::uint16_t(0);
    auto lower = static_cast<std::uint16_t>(bitmap.rows - 1);
    std::vector<unsigned char> scratch(pitch);
    for (; upper < lower; ++upper, --lower) {
        unsigned char* const upperRow = bitmap.buffer + upper * pitch;
        unsigned char* const lowerRow = bitmap.buffer + lower * pitch;
        std::memcpy(scratch.data(), upperRow, pitch);
        std::memcpy(upperRow, lowerRow, pitch);
        std::memcpy(lowerRow, scratch.data(), pitch);
    }
}

bool isJoinable(const FT_Bitmap& bitmap) {
    return bitmap.pixel_mode == FT_PIXEL_MODE_LCD && bitmap.width > 2 * subpixels && bitmap.pitch > 0;
}

FT_Error joinUnderscore(FT_BitmapGlyph glyph, bool isLast, FT_Memory memory) {
    FT_Bitmap& bitmap = glyph->bitmap;
    const Extent rendered{bitmap.width, bitmap.pitch, glyph->left};
    Extent joined = isLast ? rendered : widen(rendered);
    joined.pitch = roundUpToWords(joined.pitch);
    if (exceedsPixelLimit(joined.width / subpixels, bitmap.rows)) {
        return FT_Err_Raster_Overflow;
    }

    const auto bytes = static_cast<std::size_t>(joined.pitch) * bitmap.rows;
    unsigned char* const buffer = allocateZeroed(memory, bytes);
    for (unsigned int row = 0; row < bitmap.rows; ++row) {
        const std::size_t middle =
            static_cast<std::size_t>(row) * static_cast<std::size_t>(rendered.pitch) + rendered.width / 2;
        fillRow(buffer + static_cast<std::size_t>(row) * static_cast<std::size_t>(joined.pitch), joined.width,
                bitmap.buffer[middle]);
    }
    if (bitmap.buffer != nullptr) {
        memory->free(memory, bitmap.buffer);
    }
    bitmap.buffer = buffer;
    bitmap.width = joined.width;
    bitmap.pitch = joined.pitch;
    glyph->left = joined.left;
    return FT_Err_Ok;
}

} // namespace Vell::FontEngine::Internal
