#pragma once

#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <Utils/Public/Export.h>

#include <ft2build.h>
#include FT_IMAGE_H

#include <memory>
#include <vector>

namespace Vell::FontEngine {

namespace Internal {
class RunHold;

struct RunHoldEnd {
    void operator()(RunHold* hold) const noexcept;
};

using RunHoldPtr = std::unique_ptr<RunHold, RunHoldEnd>;
} // namespace Internal

/// A text laid out as bitmaps, in text order. Immutable but for being assigned to; any number of threads may
/// read it.
///
/// A run from a text painter holds its bitmaps all together, which costs a fraction of one reference each; a
/// copy of it owns them one by one. Its end takes the lock of the bitmap cache that it came from, on
/// whichever thread, and also when factory and cache have gone.
class VELL_API BitmapGlyphRun {
public:
    BitmapGlyphRun(std::vector<BitmapGlyph> glyphs, FT_BBox_ bbox);
    /// For the layout: `hold` is for those of the glyphs that have no owner.
    BitmapGlyphRun(std::vector<BitmapGlyph>&& glyphs, FT_BBox_ bbox, Internal::RunHoldPtr hold) noexcept;
    BitmapGlyphRun(const BitmapGlyphRun& other);
    BitmapGlyphRun(BitmapGlyphRun&& other) noexcept;
    BitmapGlyphRun& operator=(const BitmapGlyphRun& other);
    BitmapGlyphRun& operator=(BitmapGlyphRun&& other) noexcept;
    ~BitmapGlyphRun();

    const std::vector<BitmapGlyph>& getGlyphs() const { return _glyphs; }

    /// The union of the glyphs' boxes in device pixels, y pointing up, each box relative to the origin of its
    /// own glyph: its height is the ink height of the run, its width is not the run's width. All zero for an
    /// empty run.
    const FT_BBox_& getBBox() const { return _bbox; }

private:
    std::vector<BitmapGlyph> _glyphs;
    FT_BBox_ _bbox;
    Internal::RunHoldPtr _hold; // null where all glyphs have owners; ends before them
};

} // namespace Vell::FontEngine
