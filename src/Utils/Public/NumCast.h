#pragma once

#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Truncate.h>

#include <boost/numeric/conversion/cast.hpp>

#include <cmath>
#include <type_traits>

namespace Vell {

/// Converts a number to another arithmetic type, or throws BadNumCastError when the value does not fit:
/// "bad numeric conversion: positive overflow" or "... negative overflow". A fraction is truncated towards
/// zero. Not-a-number fits no integer.
template <class To, class From>
To numCast(From from) {
    static_assert(std::is_arithmetic_v<To> && std::is_arithmetic_v<From>, "numCast converts numbers");
    if constexpr (std::is_floating_point_v<From> && std::is_integral_v<To>) {
        if (std::isnan(from)) {
            throw BadNumCastError("bad numeric conversion: not a number");
        }
        // Boost refuses the lowest integer where From has no number between it and the one below it.
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
