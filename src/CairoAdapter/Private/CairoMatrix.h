#pragma once

#include <cairo.h>
#include <cinder/MatrixAffine2.h>

namespace Vell::CairoAdapter::Internal {

cairo_matrix_t toCairoMatrix(const cinder::MatrixAffine2<float>& matrix);

/// Applies `first`, then `second`.
cairo_matrix_t chain(const cairo_matrix_t& first, const cairo_matrix_t& second);

/// From cairo's device units on to the pixels of the surface, which may have a scale and an offset.
cairo_matrix_t getSurfaceTransform(cairo_surface_t* surface);
/// The same of the surface that a context draws on.
cairo_matrix_t getSurfaceTransform(cairo_t* context);

/// Whether cairo accepts the matrix: all of it finite, and invertible into something finite. Any other puts a
/// cairo_t into an error state that it never leaves.
bool isDrawable(const cairo_matrix_t& matrix);

/// Whether pixman, which draws the images, can hold the inverse of the matrix, which leads to the pixels of
/// the surface, in its 16.16 numbers. It cannot where a row or column of an image is drawn thinner than
/// 1/32767 of a pixel.
bool isDrawableForImages(const cairo_matrix_t& matrix);

/// Whether the translation of that inverse fits, too. cairo (1.16) shifts the picture to make it small, which
/// fails under extreme slants. For matrices that are drawable for images, on surfaces no larger than images
/// can be.
bool isPlaceableInImages(const cairo_matrix_t& matrix);

} // namespace Vell::CairoAdapter::Internal
