#pragma once

namespace cinder {

/// A point or a displacement in the plane, in whatever unit its user chooses.
template <class T>
struct Vec2 {
    T x = T();
    T y = T();

    constexpr Vec2() = default;
    constexpr Vec2(T xValue, T yValue)
        : x(xValue)
        , y(yValue) {}

    friend constexpr bool operator==(const Vec2& lhs, const Vec2& rhs) {
        return lhs.x == rhs.x && lhs.y == rhs.y;
    }
    friend constexpr bool operator!=(const Vec2& lhs, const Vec2& rhs) { return !(lhs == rhs); }
};

} // namespace cinder
