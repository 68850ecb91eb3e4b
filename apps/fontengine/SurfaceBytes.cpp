#include "SurfaceBytes.h"

#include <CairoAdapter/CairoAdapter.h>

#include <exception>

namespace Vell::Tool {

cairo_status_t appendBytes(void* bytes, const unsigned char* data, unsigned int length) {
    try {
        static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::exception&) {
        return CAIRO_STATUS_NO_MEMORY; // cairo's frames must not see the exception
    }
}

std::string encodePng(cairo_surface_t* surface) {
    std::string bytes;
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png_stream(surface, appendBytes, &bytes));
    return bytes;
}

} // namespace Vell::Tool
