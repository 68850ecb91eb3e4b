#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Utils/Public/Export.h>

namespace Vell::FontEngine {

/// A glyph painter that wants to know which glyphs come in one go, because it looks at what it draws on once
/// for all of them. Optional: a BitmapGlyphPainter that is none is asked for its glyphs one by one.
///
///     beginGlyphRun(); drawGlyph(...); drawGlyph(...); ... endGlyphRun();
///
/// RasterTextPainter puts the two calls around the glyphs of each run that has any; runs are not nested.
/// Between them it makes no call but drawGlyph, neither to this painter nor to the Gfx::Painter beside it:
/// what the glyphs are drawn on, and the transform that they are drawn under, is the same for all of them.
///
/// Threads: all calls of a run come from one thread.
class VELL_API BitmapGlyphRunPainter : public BitmapGlyphPainter {
public:
    ~BitmapGlyphRunPainter() override;

    BitmapGlyphRunPainter* getRunPainter() override;

    /// What it throws passes through the text painter; then there are no glyphs and no endGlyphRun.
    virtual void beginGlyphRun() = 0;

    /// Follows each beginGlyphRun that returned, also where a glyph of the run threw.
    virtual void endGlyphRun() noexcept = 0;
};

} // namespace Vell::FontEngine
