#pragma once

#include <CairoAdapter/Public/CairoAdapterException.h>

#include <cairo.h>
#include <cinder/Color.h>

namespace Vell::CairoAdapter::Internal {

/// Saves the state of a context and restores it at the end of the scope.
class ContextState {
public:
    explicit ContextState(cairo_t* context)
        : _context(context) {
        cairo_save(_context);
    }
    ContextState(const ContextState&) = delete;
    ContextState& operator=(const ContextState&) = delete;
    ~ContextState() { cairo_restore(_context); }

private:
    cairo_t* _context;
};

inline void setSource(cairo_t* context, const cinder::ColorAT<unsigned char>& color) {
    constexpr double max = 255.0;
    cairo_set_source_rgba(context, color.r / max, color.g / max, color.b / max, color.a / max);
}

} // namespace Vell::CairoAdapter::Internal
