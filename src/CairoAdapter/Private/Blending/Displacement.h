#pragma once

namespace Vell::CairoAdapter::Internal {

/// How a bitmap lies between the pixels of an image, each of which takes from two columns and two rows of it.
struct Displacement {
    int left;              ///< the pixels that take from the first column and from nothing beside it
    int top;               ///< the pixels that take from the first row and from nothing above it
    unsigned int ofRight;  ///< what they take from the right one of two columns, in 1/128
    unsigned int ofBottom; ///< what they take from the lower one of two rows, in 1/128
};

constexpr int weightBits = 7;
constexpr unsigned int allWeight = 1U << weightBits;

/// The displacement of a bitmap with its top left corner at (x, y), in the steps that cairo's images know.
/// The coordinates must be less than 32767 away from 0.
Displacement displace(double x, double y);

} // namespace Vell::CairoAdapter::Internal
