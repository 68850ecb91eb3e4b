#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Vell::FontLoaders::Internal {

/// Big-endian numbers in bytes that others own. Positions must be within what `holds` confirms.
struct BigEndianBytes {
    const unsigned char* data = nullptr;
    std::size_t size = 0;

    bool holds(std::size_t at, std::size_t count) const { return at <= size && size - at >= count; }
    unsigned int u16(std::size_t at) const {
        return static_cast<unsigned int>(data[at]) << 8U | data[at + 1];
    }
    std::uint32_t u32(std::size_t at) const { return u16(at) << 16U | u16(at + 2); }
};

/// Counts the glyphs that TrueType glyphs are made of. Reads the file as FreeType has it, unpacked where it
/// was packed, in place; lives no longer than the face.
class GlyfReader {
public:
    explicit GlyfReader(FT_Face face);

    bool isBounded(unsigned int glyphIndex) const;
    bool areAllBounded();

private:
    /// False as soon as there are more than may be.
    bool addParts(unsigned int glyphIndex, unsigned int& count) const;
    std::size_t getOffset(unsigned int glyphIndex) const;

    BigEndianBytes _glyf;
    BigEndianBytes _loca;
    bool _hasLongOffsets = false;
    std::size_t _glyphCount = 0;
    std::optional<bool> _areAllBounded;
};

/// Gives the face its reader, which ends with it, unless its library has another memory than ours. Throws
/// std::bad_alloc with the face unchanged.
void attachGlyfReader(FT_Face face);

} // namespace Vell::FontLoaders::Internal
