#pragma once

#include <string_view>

namespace Vell::Tool {

/// The values that an option takes, both ends included. They keep every length that is computed from them
/// finite and every picture that passes the limits of its format drawable.
struct NumberLimits {
    std::string_view option;
    float least;
    float greatest;
};

constexpr NumberLimits sizeLimits{"--size", 0.1F, 4096.0F};
constexpr NumberLimits scaleLimits{"--scale", 0.01F, 100.0F};
constexpr NumberLimits ratioLimits{"--dpr", 0.1F, 16.0F};
constexpr NumberLimits spacingLimits{"--letter-spacing", -4096.0F, 4096.0F};
constexpr NumberLimits passLimits{"--passes", 1.0F, 1000000.0F};
constexpr NumberLimits rotationLimits{"--rotate", -36000.0F, 36000.0F};

/// Throws UsageError for a value outside, NaN included.
void checkLimits(const NumberLimits& limits, float value);

} // namespace Vell::Tool
