#pragma once

#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>

#include <cairo.h>

namespace Vell::CairoAdapter {

/// cairo reports an error (then the text is cairo's own), or something is to be drawn that the adapter does
/// not know: another painter's kind of path, a bitmap of an unknown pixel mode.
class VELL_API CairoAdapterException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    CairoAdapterException(const CairoAdapterException&) = default;
    CairoAdapterException& operator=(const CairoAdapterException&) = default;
    ~CairoAdapterException() override;
};

/// Throws CairoAdapterException with cairo's text unless the status is a success.
VELL_API void throwIfFailed(cairo_status_t status);

} // namespace Vell::CairoAdapter
