#pragma once

#include <FontLoaders/Private/FreeTypeBounds/GlyphRecords.h>
#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// Follows the components of TrueType glyphs as FreeType would, but without recursion. It reads the bytes of
/// FreeType's stream in place (of a compressed font, the unpacked ones), so it must not outlive the face.
class GlyfReader {
public:
    explicit GlyfReader(FT_Face face);

    /// CompositeGlyphs.h documents these three. `face` is the face that was passed to the constructor.
    bool isBounded(unsigned int glyphIndex) const;
    FT_Error check(unsigned int glyphIndex, bool runsPrograms) const;
    bool isAutoHinterBounded(FT_Face face);

    /// The work of a glyph's programs in the interpreter; maxProgramWork defines the unit.
    std::uint64_t measureProgramWork(unsigned int glyphIndex) const { return measure(glyphIndex).work; }

    /// Whether a glyph or one of its parts has points.
    bool hasPoints(unsigned int glyphIndex) const { return measure(glyphIndex).pointCount > 0; }

    /// What it takes to read all glyphs of the font, one after the other, with their components.
    struct Totals {
        std::uint64_t partCount = 0; ///< counting stops after `maxParts`
        std::uint64_t byteCount = 0; ///< more than the table has if glyphs overlap
    };
    Totals measureAll(std::uint64_t maxParts) const;
    /// The length of the table of glyphs in bytes. 0 for a font without TrueType glyphs.
    std::uint64_t getTableSize() const { return _glyf.size(); }

private:
    struct Tree {
        std::size_t partCount = 0; ///< counting stops at the bound
        std::size_t depth = 0;     ///< 1 for a glyph without components
        std::uint64_t pointCount = 0;
        std::uint64_t work = 0; ///< of the programs, as maxProgramWork defines it
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

} // namespace Vell::FontLoaders::Internal
