#pragma once

#include <FontLoaders/Private/BigEndianBytes.h>
#include <FontLoaders/Private/GlyphRecords.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// Follows the glyphs that TrueType glyphs are made of, as FreeType would, without recursion. Reads the file
/// as FreeType has it, unpacked where it was packed, in place; lives no longer than the face.
class GlyfReader {
public:
    explicit GlyfReader(FT_Face face);

    /// See CompositeGlyphs.h for these three; `face` is the one of the constructor.
    bool isBounded(unsigned int glyphIndex) const;
    FT_Error check(unsigned int glyphIndex, bool runsPrograms) const;
    bool isAutoHinterBounded(FT_Face face);

    /// What the programs of a glyph are to the interpreter, see maxProgramWork.
    std::uint64_t measureProgramWork(unsigned int glyphIndex) const { return measure(glyphIndex).work; }

private:
    struct Tree {
        std::size_t partCount = 0; ///< does not count on beyond the bound
        std::size_t depth = 0;     ///< 1 for a glyph without components
        std::uint64_t pointCount = 0;
        std::uint64_t work = 0; ///< of the programs
    };
    struct OpenGlyph {
        Components components;
        std::uint64_t pointsBefore;
    };

    void readLimits(BigEndianBytes file);
    Tree measure(unsigned int glyphIndex) const;
    std::optional<unsigned int> takeNext(std::vector<OpenGlyph>& open, Tree& tree) const;
    std::uint64_t estimateWork(std::uint64_t programSize, std::uint64_t pointCount) const;
    std::size_t measureAutoHinterDepth(FT_Face face) const;
    BigEndianBytes getGlyph(unsigned int glyphIndex) const;
    std::optional<std::uint64_t> getOffset(std::uint64_t glyphIndex) const;

    BigEndianBytes _glyf;
    BigEndianBytes _loca;
    bool _hasLongOffsets = false;
    unsigned int _glyphCount = 0;
    std::uint64_t _twilightPointCount = 0;
    std::uint64_t _controlValueCount = 0;
    std::uint64_t _storageSize = 0;
    std::uint64_t _stackSize = 0;
    std::optional<std::size_t> _autoHinterDepth;
};

/// Gives the face its reader, which ends with it, unless its library has another memory than ours. Throws
/// std::bad_alloc with the face unchanged.
void attachGlyfReader(FT_Face face);

} // namespace Vell::FontLoaders::Internal
