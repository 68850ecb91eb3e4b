#pragma once

namespace Vell::CairoAdapter::Testing {

/// Watches the functions of cairo that reveal whether cairo draws a glyph. The executable defines these
/// functions itself: the calls of the adapter arrive here and are forwarded to libcairo.
class CairoSpy {
public:
    /// How often the test or the adapter called cairo_mask or cairo_paint since the last call of this
    /// function.
    static int takeDrawingCount();

    /// During its lifetime, contexts report an operator other than over: the adapter then leaves all drawing
    /// to cairo, which knows the real one.
    class LeavesDrawingToCairo {
    public:
        LeavesDrawingToCairo();
        LeavesDrawingToCairo(const LeavesDrawingToCairo&) = delete;
        LeavesDrawingToCairo& operator=(const LeavesDrawingToCairo&) = delete;
        ~LeavesDrawingToCairo();
    };
};

} // namespace Vell::CairoAdapter::Testing
