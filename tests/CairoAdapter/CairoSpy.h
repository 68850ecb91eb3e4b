#pragma once

namespace Vell::CairoAdapter::Testing {

/// The functions of cairo that show whether a glyph was drawn by cairo. The executable defines these
/// functions itself, so the calls of the adapter arrive here and go on to libcairo.
class CairoSpy {
public:
    /// How often cairo was asked to draw (cairo_mask, cairo_paint) since the last call of this function, by
    /// the test or by the adapter.
    static int takeDrawingCount();

    /// While it lives, contexts report another operator than over: the adapter then leaves all drawing to
    /// cairo, which knows the true one.
    class LeavesDrawingToCairo {
    public:
        LeavesDrawingToCairo();
        LeavesDrawingToCairo(const LeavesDrawingToCairo&) = delete;
        LeavesDrawingToCairo& operator=(const LeavesDrawingToCairo&) = delete;
        ~LeavesDrawingToCairo();
    };
};

} // namespace Vell::CairoAdapter::Testing
