#pragma once

#include <FontEngine/Private/FE_FontTable.h>

#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine::Internal {

/// Reads tables up to a number of times. A table of hundreds of kilobytes can be searched for hours if it
/// refers to itself often enough.
class BoundedReader {
public:
    bool isExhausted() const { return _reads > maxReads; }

    std::optional<TableFields> read(const FontTable& table, std::size_t offset, std::size_t size) {
        ++_reads;
        return isExhausted() ? std::nullopt : table.read(offset, size);
    }

private:
    static constexpr int maxReads = 100'000;

    int _reads = 0;
};

/// What the PNG files of one glyph may demand of the library that decodes them, all of them together. That
/// library unpacks texts and colour profiles, and pixel data beyond the last pixel, to a thousand times their
/// length. It keeps the texts, in memory that it allocates on its own.
class PngBounds {
public:
    explicit PngBounds(std::uint64_t maxPixels)
        : _maxPixels(maxPixels) {}

    /// Returns false if the file has more than the maximum of pixels, if its pixel data is longer than its
    /// pixels need, or if it and the files before have more than 64 KiB that is neither pixels nor palette.
    /// A file that is broken is admitted: it fails when it is decoded.
    bool admits(BoundedReader& reader, const FontTable& table, std::size_t begin, std::size_t size);

private:
    struct Chunk;

    bool admitsHeader(const Chunk& header);
    bool admitsChunk(const Chunk& chunk);

    std::uint64_t _maxPixels;
    std::uint64_t _otherBytes = 0;
    std::uint64_t _pixelBytes = 0; // of this file; so is the next field
    std::uint64_t _maxPixelBytes = 0;
};

} // namespace Vell::FontEngine::Internal
