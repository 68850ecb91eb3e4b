#pragma once

#include <Utils/Public/Exceptions.h>

#include <boost/numeric/conversion/cast.hpp>

#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

/// Conversions between number types. A fraction is always truncated towards zero; the functions differ in
/// what they do with a value that does not fit.
namespace Vell {

/// The integer part of `value`. Empty if it does not fit in To, as for NaN and the infinities.
template <class To, class From>
constexpr std::optional<To> tryTruncate(From value) {
    static_assert(std::is_integral_v<To> && std::is_floating_point_v<From>, "from floating point to integer");
    // The upper bound is a power of two and therefore exact in From. A value between `min - 1` and `min`
    // truncates to `min`. Where From cannot tell these two apart, only `min` itself fits.
    constexpr To halfAboveMax = static_cast<To>(std::numeric_limits<To>::max() / 2 + 1);
    constexpr From aboveMax = static_cast<From>(halfAboveMax) * From(2);
    constexpr From min = static_cast<From>(std::numeric_limits<To>::min());
    const bool fits = value < aboveMax && (value >= min || value > min - From(1));
    return fits ? std::optional<To>(static_cast<To>(value)) : std::nullopt;
}

/// The integer part of `value`. A value that does not fit in To becomes the nearest one that does; NaN
/// becomes 0.
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

/// Converts a number to another arithmetic type. Throws BadNumCastError if the value does not fit; the text
/// is "bad numeric conversion: positive overflow", "... negative overflow", or "... not a number" for a NaN
/// that is to become an integer.
template <class To, class From>
To numCast(From from) {
    static_assert(std::is_arithmetic_v<To> && std::is_arithmetic_v<From>, "numCast converts numbers");
    if constexpr (std::is_floating_point_v<From> && std::is_integral_v<To>) {
        if (std::isnan(from)) {
            throw BadNumCastError("bad numeric conversion: not a number");
        }
        // Boost rejects the lowest integer if From has no number between it and the integer below it.
        if (const auto truncated = tryTruncate<To>(from)) {
            return *truncated;
        }
    }
    try {
        return boost::numeric_cast<To>(from);
    } catch (const boost::numeric::bad_numeric_cast& error) {
        throw BadNumCastError(error.what());
    }
}

} // namespace Vell
