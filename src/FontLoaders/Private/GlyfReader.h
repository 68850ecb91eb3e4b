#pragma once

#include <FontLoaders/Private/BigEndianBytes.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstddef>
#include <optional>

namespace Vell::FontLoaders::Internal {

/// Follows the glyphs that TrueType glyphs are made of, as FreeType would, without recursion. Reads the file
/// as FreeType has it, unpacked where it was packed, in place; lives no longer than the face.
class GlyfReader {
public:
    explicit GlyfReader(FT_Face face);

    /// See CompositeGlyphs.h for these two; `face` is the one of the constructor.
    bool isBounded(unsigned int glyphIndex) const;
    bool isAutoHinterBounded(FT_Face face);

private:
    struct Tree {
        std::size_t partCount; ///< does not count on beyond the bound
        std::size_t depth;     ///< 1 for a glyph without components
    };

    Tree measure(unsigned int glyphIndex) const;
    std::size_t measureAutoHinterDepth(FT_Face face) const;
    BigEndianBytes getGlyph(unsigned int glyphIndex) const;
    std::optional<std::uint64_t> getOffset(std::uint64_t glyphIndex) const;

    BigEndianBytes _glyf;
    BigEndianBytes _loca;
    bool _hasLongOffsets = false;
    unsigned int _glyphCount = 0;
    std::optional<std::size_t> _autoHinterDepth;
};

/// Gives the face its reader, which ends with it, unless its library has another memory than ours. Throws
/// std::bad_alloc with the face unchanged.
void attachGlyfReader(FT_Face face);

} // namespace Vell::FontLoaders::Internal
