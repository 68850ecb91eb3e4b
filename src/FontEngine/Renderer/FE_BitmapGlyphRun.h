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

/// A text laid out as bitmaps, in text order. Only assignment changes a run.
///
/// A run from a text painter holds its bitmaps together, which costs a fraction of counting a reference to
/// each. A copy of the run counts them one by one.
///
/// Threads: any number of threads may read one run at once, and any thread may destroy it. Its destructor
/// takes the lock of the bitmap cache that the bitmaps came from, which outlives the factory.
class VELL_API BitmapGlyphRun {
public:
    BitmapGlyphRun(std::vector<BitmapGlyph> glyphs, FT_BBox_ bbox);
    /// Only for the layout. `hold` keeps the bitmaps of the glyphs that own no reference.
    BitmapGlyphRun(std::vector<BitmapGlyph>&& glyphs, FT_BBox_ bbox, Internal::RunHoldPtr hold) noexcept;
    BitmapGlyphRun(const BitmapGlyphRun& other);
    BitmapGlyphRun(BitmapGlyphRun&& other) noexcept;
    BitmapGlyphRun& operator=(const BitmapGlyphRun& other);
    BitmapGlyphRun& operator=(BitmapGlyphRun&& other) noexcept;
    ~BitmapGlyphRun();

    const std::vector<BitmapGlyph>& getGlyphs() const { return _glyphs; }

    /// The union of the glyphs' boxes in device pixels, y pointing up, each box relative to the origin of its
    /// own glyph. Its height is the ink height of the run, but its width is not the run's width. All zero for
    /// an empty run.
    const FT_BBox_& getBBox() const { return _bbox; }

private:
    std::vector<BitmapGlyph> _glyphs;
    FT_BBox_ _bbox;
    Internal::RunHoldPtr _hold; // null if all glyphs own their references; ends before them
};

} // namespace Vell::FontEngine
