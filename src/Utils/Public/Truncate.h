#pragma once

#include <limits>
#include <optional>
#include <type_traits>

namespace Vell {

/// The integer part of `value`, towards zero, or nothing when To cannot hold it (NaN and infinities
/// included).
template <class To, class From>
constexpr std::optional<To> tryTruncate(From value) {
    static_assert(std::is_integral_v<To> && std::is_floating_point_v<From>, "from floating point to integer");
    // The upper bound is a power of two, hence exact in From. Above `min - 1` the fraction is cut to `min`;
    // where From cannot tell the two apart, only `min` itself is left.
    constexpr To halfAboveMax = static_cast<To>(std::numeric_limits<To>::max() / 2 + 1);
    constexpr From aboveMax = static_cast<From>(halfAboveMax) * From(2);
    constexpr From min = static_cast<From>(std::numeric_limits<To>::min());
    const bool fits = value < aboveMax && (value >= min || value > min - From(1));
    return fits ? std::optional<To>(static_cast<To>(value)) : std::nullopt;
}

/// The integer part of `value`, towards zero; what To cannot hold becomes its nearest value, NaN becomes 0.
template <class To, class From>
constexpr To truncateSaturated(From value) {
    if (const auto truncated = tryTruncate<To>(value)) {
        return *truncated;
    }
    if (value > From(0)) {
        return std::numeric_limits<To>::max();
    }
    return value < From(0) ? std::numeric_limits<To>::min() : To(0);
}

} // namespace Vell
