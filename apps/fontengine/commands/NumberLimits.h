#pragma once

#include <string>
#include <string_view>

namespace Vell::Tool {

/// The values that an option takes, both ends included. They keep every length that is computed from them
/// finite, and every picture that passes the limits of its format drawable.
struct NumberLimits {
    std::string_view option;
    double least;
    double greatest;
    bool isWhole = false;
};

constexpr NumberLimits sizeLimits{"--size", 0.1, 4096.0};
constexpr NumberLimits scaleLimits{"--scale", 0.01, 100.0};
constexpr NumberLimits ratioLimits{"--dpr", 0.1, 16.0};
constexpr NumberLimits spacingLimits{"--letter-spacing", -4096.0, 4096.0};
constexpr NumberLimits rotationLimits{"--rotate", -36000.0, 36000.0};
constexpr NumberLimits passLimits{"--passes", 1.0, 1e6, true};
constexpr NumberLimits faceLimits{"--max-faces", 0.0, 1e15, true};
constexpr NumberLimits bitmapLimits{"--max-bitmap-bytes", 0.0, 1e15, true};

/// Throws UsageError for a word that is no number or lies outside.
void checkNumber(const NumberLimits& limits, const std::string& word);

} // namespace Vell::Tool
