#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Vell::FontEngine::Internal {

/// A rectangle of whole device pixels, y pointing up.
struct PixelBox {
    int left = 0;
    int bottom = 0;
    int right = 0;
    int top = 0;

    bool isEmpty() const { return left >= right || bottom >= top; }
    std::size_t getWidth() const { return isEmpty() ? 0 : static_cast<std::size_t>(right - left); }
    std::size_t getHeight() const { return isEmpty() ? 0 : static_cast<std::size_t>(top - bottom); }
    std::size_t getArea() const { return getWidth() * getHeight(); }

    /// Returns the index of a pixel in rows from the top to the bottom.
    std::size_t indexOf(int x, int y) const {
        return static_cast<std::size_t>(top - 1 - y) * getWidth() + static_cast<std::size_t>(x - left);
    }
};

inline PixelBox intersect(const PixelBox& a, const PixelBox& b) {
    return {std::max(a.left, b.left), std::max(a.bottom, b.bottom), std::min(a.right, b.right),
            std::min(a.top, b.top)};
}

} // namespace Vell::FontEngine::Internal
