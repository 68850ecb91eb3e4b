#pragma once

#include <cairo.h>
#include <cinder/Color.h>
#include <cinder/MatrixAffine2.h>

#include <optional>

/// What both painters need around a cairo context: its saved state, its source colour and its matrices.
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

void setSource(cairo_t* context, const cinder::ColorAT<unsigned char>& color);

cairo_matrix_t toCairoMatrix(const cinder::MatrixAffine2<float>& matrix);

/// Applies `first`, then `second`.
cairo_matrix_t chain(const cairo_matrix_t& first, const cairo_matrix_t& second);

/// The inverse; empty unless both the matrix and its inverse are finite.
std::optional<cairo_matrix_t> tryInvert(cairo_matrix_t matrix);

/// Whether cairo accepts the matrix: it has a finite inverse. Any other matrix puts a cairo_t into an error
/// state that it never leaves.
bool isDrawable(const cairo_matrix_t& matrix);

/// From cairo's device units to the pixels of the surface, which may have a scale and an offset.
cairo_matrix_t getSurfaceTransform(cairo_surface_t* surface);
/// The same for the surface that a context draws on.
cairo_matrix_t getSurfaceTransform(cairo_t* context);

} // namespace Vell::CairoAdapter::Internal
