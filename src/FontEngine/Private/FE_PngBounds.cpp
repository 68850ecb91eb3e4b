#include <FontEngine/Private/FE_PngBounds.h>

#include <algorithm>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

constexpr std::uint64_t slack = std::uint64_t(64) << 10U;

constexpr std::uint32_t makeType(char a, char b, char c, char d) {
    return static_cast<std::uint32_t>(FT_MAKE_TAG(a, b, c, d));
}

/// The most bytes that pixels take if they are not packed at all, with room for the frame around them and for
/// passes of interlaced rows.
std::uint64_t getMaxPixelBytes(std::uint64_t width, std::uint64_t rows) {
    constexpr std::uint64_t longestSide = 0x7FFF; // FreeType decodes no longer ones
    constexpr std::uint64_t bytesPerPixel = 8;    // four channels of 16 bits
    const std::uint64_t rowBytes = 1 + bytesPerPixel * std::min(width, longestSide);
    return slack + 2 * rowBytes * std::min(rows, longestSide);
}

} // namespace

struct PngBounds::Chunk {
    std::uint32_t length;
    std::uint32_t type;
    std::uint32_t width; // of the picture, if this is its header; so is the next field
    std::uint32_t rows;
};

bool PngBounds::admitsHeader(const Chunk& header) {
    if (_maxPixelBytes == 0) { // a second header is an error
        _maxPixelBytes = getMaxPixelBytes(header.width, header.rows);
    }
    return header.rows == 0 || header.width <= _maxPixels / header.rows;
}

bool PngBounds::admitsChunk(const Chunk& chunk) {
    constexpr std::uint32_t ancillaryBit = 0x20000000; // the first letter is a small one
    if (chunk.type == makeType('I', 'H', 'D', 'R')) {
        return admitsHeader(chunk);
    }
    if (chunk.type == makeType('I', 'D', 'A', 'T')) {
        _pixelBytes += chunk.length;
        return _maxPixelBytes == 0 || _pixelBytes <= _maxPixelBytes;
    }
    _otherBytes += (chunk.type & ancillaryBit) != 0 ? chunk.length : 0;
    return _otherBytes <= slack;
}

bool PngBounds::admits(BoundedReader& reader, const FontTable& table, std::size_t begin, std::size_t size) {
    constexpr std::size_t signatureBytes = 8;
    constexpr std::size_t frameBytes = 12; // the length of a chunk, its type and its checksum
    const std::size_t end = std::min(begin + size, table.getSize());
    _pixelBytes = 0;
    _maxPixelBytes = 0;
    for (std::size_t at = begin + signatureBytes; at + 8 <= end;) {
        std::optional<TableFields> fields = reader.read(table, at, std::min<std::size_t>(end - at, 16));
        if (!fields) {
            return false;
        }
        const std::uint32_t length = fields->u32();
        const std::uint32_t type = fields->u32();
        const std::uint32_t width = fields->u32();
        if (!admitsChunk({length, type, width, fields->u32()})) {
            return false;
        }
        if (type == makeType('I', 'E', 'N', 'D')) {
            return _maxPixelBytes == 0 || _pixelBytes <= _maxPixelBytes;
        }
        at += frameBytes + length;
    }
    return true;
}

} // namespace Vell::FontEngine::Internal
