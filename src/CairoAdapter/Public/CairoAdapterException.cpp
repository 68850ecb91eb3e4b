#include <CairoAdapter/Public/CairoAdapterException.h>

namespace Vell::CairoAdapter {

CairoAdapterException::~CairoAdapterException() = default;

void throwIfFailed(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw CairoAdapterException(cairo_status_to_string(status));
    }
}

} // namespace Vell::CairoAdapter
