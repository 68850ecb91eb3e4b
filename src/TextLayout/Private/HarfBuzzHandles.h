#pragma once

#include <hb.h>

#include <memory>

namespace Vell::TextLayout {

struct HarfBuzzEnd {
    void operator()(hb_blob_t* blob) const noexcept { hb_blob_destroy(blob); }
    void operator()(hb_face_t* face) const noexcept { hb_face_destroy(face); }
    void operator()(hb_font_t* font) const noexcept { hb_font_destroy(font); }
    void operator()(hb_font_funcs_t* functions) const noexcept { hb_font_funcs_destroy(functions); }
    void operator()(hb_set_t* set) const noexcept { hb_set_destroy(set); }
    void operator()(hb_buffer_t* buffer) const noexcept { hb_buffer_destroy(buffer); }
    void operator()(hb_shape_plan_t* plan) const noexcept { hb_shape_plan_destroy(plan); }
};

template <class T>
using HarfBuzzPtr = std::unique_ptr<T, HarfBuzzEnd>;

} // namespace Vell::TextLayout
