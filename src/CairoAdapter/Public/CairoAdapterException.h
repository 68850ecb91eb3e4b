#pragma once

#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>

#include <cairo.h>

namespace Vell::CairoAdapter {

/// cairo reports an error (the text is then cairo's own), or the adapter cannot draw what it is given: a path
/// that no CairoPainter made, or a bitmap with an unknown pixel mode or a pitch shorter than its rows.
/// CairoGlyphPainter also throws it for an invalid device pixel ratio.
class VELL_API CairoAdapterException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    CairoAdapterException(const CairoAdapterException&) = default;
    CairoAdapterException& operator=(const CairoAdapterException&) = default;
    ~CairoAdapterException() override;
};

/// Throws CairoAdapterException with cairo's text unless the status is CAIRO_STATUS_SUCCESS.
VELL_API void throwIfFailed(cairo_status_t status);

} // namespace Vell::CairoAdapter
