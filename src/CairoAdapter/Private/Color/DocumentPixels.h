#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>

/// What documents cannot express becomes an image of just that part. cairo would turn a whole region of the
/// page into an image, and put it over the vectors that are there already.
namespace Vell::CairoAdapter::Internal {

/// A rectangle in device units.
struct DeviceBox {
    double left;
    double top;
    double right;
    double bottom;

    bool isEmpty() const { return !(left < right && top < bottom); }
};

/// Also covers boxes of which one is empty.
DeviceBox unite(const DeviceBox& a, const DeviceBox& b);

/// The clip, as far as cairo's numbers reach. The context's own matrix must be the identity.
DeviceBox getClip(cairo_t* context);

/// Whether the surface below the context is an SVG, PDF or PostScript document.
bool isDocument(cairo_t* context);

/// Whether the surface below the context keeps a group that is combined in this way. Images and recordings
/// keep everything.
bool isExpressible(cairo_t* context, cairo_operator_t mode);

/// Whether the surface below the context shows the gradient right: in SVG, one circle must hold the other.
bool isExpressible(cairo_t* context, const FontEngine::RadialGradient& gradient);

/// Whether the surface below the context keeps mesh patterns.
bool hasMeshes(cairo_t* context);

/// From device units to the pixels of the surface if it is an image, else to pixels of the resolution that
/// the surface has for images, or of a lower one if a side of the box would have more than 4,096 pixels.
cairo_matrix_t getPixelTransform(cairo_t* context, const DeviceBox& box);

/// Whole pixels.
struct PixelArea {
    int left;
    int top;
    int width;
    int rows;
};

/// The pixels that a box covers at least in part.
PixelArea getPixels(const DeviceBox& box, const cairo_matrix_t& toPixels);

/// The pattern for an image that begins at the area's corner.
PatternPtr placeImage(cairo_surface_t* image, const PixelArea& area, const cairo_matrix_t& toPixels);

/// Draws the part of the pattern within the box as an image. Returns null for an empty box.
PatternPtr toPixels(cairo_t* context, cairo_pattern_t* pattern, const DeviceBox& box);

} // namespace Vell::CairoAdapter::Internal
