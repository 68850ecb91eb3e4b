#pragma once

#include <cairo.h>
#include <cinder/Vector.h>

/// Where the pixels of a bitmap fall when cairo draws it, and whether cairo can draw it there.
namespace Vell::CairoAdapter::Internal {

/// In pixels. Interpolation over so small a displacement does not change a coverage of 255.
constexpr double alignmentTolerance = 1.0 / 256.0;

/// From the pixels of a bitmap, made for the ratio, to the units that `deviceTransform` leads to.
cairo_matrix_t placeGlyph(const cinder::Vec2<float>& position, float devicePixelRatio,
                          const cairo_matrix_t& deviceTransform);

/// Whether a bitmap of width * height pixels, placed by the matrix, can leave a trace within the context's
/// clip. Other bitmaps must not reach cairo: far away or tiny, they overflow the numbers of its image code.
bool isVisible(cairo_t* context, const cairo_matrix_t& matrix, double width, double height);

/// The filter that changes the bitmap least: none where its pixels fall on device pixels.
cairo_filter_t chooseFilter(cairo_t* context, const cairo_matrix_t& matrix, double width, double height);

} // namespace Vell::CairoAdapter::Internal
