#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Utils/Public/Export.h>

namespace Vell::FontEngine {

/// A glyph painter that learns when a run of glyphs begins and ends, so that it can inspect its drawing
/// target once per run. Optional: a plain BitmapGlyphPainter gets the same glyphs without these calls.
///
///     beginGlyphRun(); drawGlyph(...); drawGlyph(...); ... endGlyphRun();
///
/// RasterTextPainter puts the two calls around the glyphs of each run that is not empty. Runs do not nest.
/// Between the two calls it calls only drawGlyph, on this painter, and nothing on the Gfx::Painter beside it:
/// the drawing target and the transform stay the same for all glyphs of the run.
///
/// Threads: all calls of a run come from one thread.
class VELL_API BitmapGlyphRunPainter : public BitmapGlyphPainter {
public:
    ~BitmapGlyphRunPainter() override;

    BitmapGlyphRunPainter* getRunPainter() override;

    /// If this throws, the exception passes through the text painter, and neither drawGlyph nor endGlyphRun
    /// follows.
    virtual void beginGlyphRun() = 0;

    /// Called once for each beginGlyphRun that returned, even if drawing a glyph of the run threw.
    virtual void endGlyphRun() noexcept = 0;
};

} // namespace Vell::FontEngine
