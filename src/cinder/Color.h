#pragma once

namespace cinder {

/// A colour with straight (not premultiplied) alpha. With T = unsigned char each channel is 0..255.
template <class T>
struct ColorAT {
    T r = T();
    T g = T();
    T b = T();
    T a = T();

    constexpr ColorAT() = default;
    constexpr ColorAT(T red, T green, T blue, T alpha)
        : r(red)
        , g(green)
        , b(blue)
        , a(alpha) {}

    friend constexpr bool operator==(const ColorAT& lhs, const ColorAT& rhs) {
        return lhs.r == rhs.r && lhs.g == rhs.g && lhs.b == rhs.b && lhs.a == rhs.a;
    }
    friend constexpr bool operator!=(const ColorAT& lhs, const ColorAT& rhs) { return !(lhs == rhs); }
};

} // namespace cinder
