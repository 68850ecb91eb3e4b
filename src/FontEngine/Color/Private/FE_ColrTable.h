#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/Private/FE_FontTable.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Vell::FontEngine::Internal {

/// Finds the glyphs of the table COLR. All offsets count from the start of the table.
///
/// FreeType has functions for it, too. Those for version 1 are experimental, Debian 12 disables them, and
/// they neither bound what they read nor know variable paints.
class ColrTable {
public:
    explicit ColrTable(FT_Face face);

    const FontTable& getTable() const { return _table; }

    /// The layers of a glyph in version 0.
    struct Layers {
        std::size_t first;
        std::size_t count;
    };
    struct Layer {
        unsigned int glyphIndex;
        unsigned int entry; ///< of the palette
    };
    std::optional<Layers> findLayers(unsigned int glyphIndex) const;
    std::optional<Layer> readLayer(std::size_t index) const;

    /// Returns the offset of the root paint of a glyph in version 1.
    std::optional<std::size_t> findPaint(unsigned int glyphIndex) const;
    /// Returns the offset of a paint in the list of layers.
    std::optional<std::size_t> findLayerPaint(std::size_t index) const;
    std::optional<PaintBox> findClipBox(unsigned int glyphIndex) const;

private:
    struct Records {
        std::size_t offset = 0; ///< of the first one
        std::size_t count = 0;
    };
    Records findList(std::size_t listOffset, std::size_t headerSize) const;
    /// Searches records that begin with a glyph index and are sorted by it, for the last one that does not
    /// exceed an index.
    std::optional<TableFields> search(const Records& records, std::size_t recordSize,
                                      unsigned int glyphIndex) const;

    FontTable _table;
    Records _layerGlyphs; ///< version 0
    Records _layers;
    std::size_t _paintList = 0; ///< version 1; 0 if there is none
    std::size_t _layerPaintList = 0;
    std::size_t _clipList = 0;
};

} // namespace Vell::FontEngine::Internal
