#pragma once

#include <algorithm>

namespace Vell::CairoAdapter::Internal {

/// Whole pixels from (left, top) on, up to (right, bottom) and without these.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool isEmpty() const { return left >= right || top >= bottom; }
};

inline PixelBox intersect(const PixelBox& a, const PixelBox& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

} // namespace Vell::CairoAdapter::Internal
