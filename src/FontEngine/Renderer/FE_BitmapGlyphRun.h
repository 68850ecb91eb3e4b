#pragma once

#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <Utils/Public/Export.h>

#include <ft2build.h>
#include FT_IMAGE_H

#include <vector>

namespace Vell::FontEngine {

/// A text laid out as bitmaps, in text order. Immutable; any number of threads may read it.
class VELL_API BitmapGlyphRun {
public:
    BitmapGlyphRun(std::vector<BitmapGlyph> glyphs, FT_BBox_ bbox);

    const std::vector<BitmapGlyph>& getGlyphs() const { return _glyphs; }

    /// The union of the glyphs' boxes in device pixels, y pointing up, each box relative to the origin of its
    /// own glyph: its height is the ink height of the run, its width is not the run's width. All zero for an
    /// empty run.
    const FT_BBox_& getBBox() const { return _bbox; }

private:
    std::vector<BitmapGlyph> _glyphs;
    FT_BBox_ _bbox;
};

} // namespace Vell::FontEngine
