#include "CairoSpy.h"

#include <cairo.h>
#include <dlfcn.h>

#include <cstdlib>
#include <utility>

namespace {

int drawingCount = 0;
bool reportsSource = false;

template <class Function>
Function* findInCairo(const char* name) {
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::abort();
    }
    return reinterpret_cast<Function*>(symbol);
}

} // namespace

void cairo_mask(cairo_t* context, cairo_pattern_t* pattern) {
    static auto* const original = findInCairo<decltype(cairo_mask)>("cairo_mask");
    ++drawingCount;
    original(context, pattern);
}

void cairo_paint(cairo_t* context) {
    static auto* const original = findInCairo<decltype(cairo_paint)>("cairo_paint");
    ++drawingCount;
    original(context);
}

cairo_operator_t cairo_get_operator(cairo_t* context) {
    static auto* const original = findInCairo<decltype(cairo_get_operator)>("cairo_get_operator");
    return reportsSource ? CAIRO_OPERATOR_SOURCE : original(context);
}

namespace Vell::CairoAdapter::Testing {

int CairoSpy::takeDrawingCount() {
    return std::exchange(drawingCount, 0);
}

CairoSpy::LeavesDrawingToCairo::LeavesDrawingToCairo() {
    reportsSource = true;
}

CairoSpy::LeavesDrawingToCairo::~LeavesDrawingToCairo() {
    reportsSource = false;
}

} // namespace Vell::CairoAdapter::Testing
