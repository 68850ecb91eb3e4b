#include <CairoAdapter/Public/CairoHandles.h>

namespace Vell::CairoAdapter {

namespace {

template <class Owner>
Owner adopt(typename Owner::pointer object, cairo_status_t (*getStatus)(typename Owner::pointer)) {
    Owner owner(object);
    throwIfFailed(owner ? getStatus(owner.get()) : CAIRO_STATUS_NULL_POINTER);
    return owner;
}

} // namespace

CairoAdapterException::~CairoAdapterException() = default;

void throwIfFailed(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw CairoAdapterException(cairo_status_to_string(status));
    }
}

ContextPtr adoptContext(cairo_t* context) {
    return adopt<ContextPtr>(context, cairo_status);
}

SurfacePtr adoptSurface(cairo_surface_t* surface) {
    return adopt<SurfacePtr>(surface, cairo_surface_status);
}

PatternPtr adoptPattern(cairo_pattern_t* pattern) {
    return adopt<PatternPtr>(pattern, cairo_pattern_status);
}

ContextPtr shareContext(cairo_t* context) {
    return adoptContext(cairo_reference(context));
}

ContextPtr makeContext(cairo_surface_t* surface) {
    return adoptContext(cairo_create(surface));
}

SurfacePtr makeImageSurface(int width, int height) {
    return adoptSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
}

void finishSurface(cairo_surface_t* surface) {
    cairo_surface_finish(surface);
    throwIfFailed(surface != nullptr ? cairo_surface_status(surface) : CAIRO_STATUS_NULL_POINTER);
}

} // namespace Vell::CairoAdapter
