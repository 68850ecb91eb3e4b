#pragma once

#include <CairoAdapter/Private/BitmapView.h>
#include <CairoAdapter/Private/PixelBox.h>

namespace Vell::CairoAdapter::Internal {

/// How a bitmap lies between the pixels of an image, each of which takes from two columns and two rows of it.
struct Displacement {
    int left;              ///< the pixels that take from the first column and from nothing beside it
    int top;               ///< the pixels that take from the first row and from nothing above it
    unsigned int ofRight;  ///< what they take from the right one of two columns, in 1/128
    unsigned int ofBottom; ///< what they take from the lower one of two rows, in 1/128
};

/// The displacement of a bitmap with its top left corner at (x, y), in the steps that cairo's images know.
/// The coordinates must be less than 32767 away from 0.
Displacement displace(double x, double y);

constexpr int maxInterpolatedWidth = 512;

/// What displaced coverage comes to by linear interpolation, just as in cairo's images: it has a column and a
/// row more than before. The pixels of `part` of it, maxInterpolatedWidth wide at most, are written row after
/// row without gaps.
void interpolate(const BitmapView& coverage, const Displacement& displacement, const PixelBox& part,
                 unsigned char* to);

} // namespace Vell::CairoAdapter::Internal
