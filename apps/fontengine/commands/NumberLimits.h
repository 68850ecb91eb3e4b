#pragma once

#include <string>
#include <string_view>

namespace Vell::Tool {

/// The range of values that an option accepts, both ends included. Within it, all lengths computed from them
/// are finite, and every picture within the limits of its format can be drawn.
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
constexpr NumberLimits widthLimits{"--width", 0.0, 1e6};
constexpr NumberLimits rotationLimits{"--rotate", -36000.0, 36000.0};
constexpr NumberLimits passLimits{"--passes", 1.0, 1e6, true};
constexpr NumberLimits paletteLimits{"--palette", 0.0, 65535.0, true};
constexpr NumberLimits faceLimits{"--max-faces", 0.0, 1e15, true};
constexpr NumberLimits bitmapLimits{"--max-bitmap-bytes", 0.0, 1e15, true};

/// Throws UsageError if the word is not a number, or outside the limits.
void checkNumber(const NumberLimits& limits, const std::string& word);

} // namespace Vell::Tool
