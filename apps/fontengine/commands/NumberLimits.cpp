#include "commands/NumberLimits.h"

#include "Errors.h"

#include <fmt/format.h>

#include <cstdlib>
#include <limits>

namespace Vell::Tool {

namespace {

/// NaN if the word is not a number.
double readNumber(const NumberLimits& limits, const std::string& word) {
    const bool isNumber =
        !word.empty() && (!limits.isWhole || word.find_first_not_of("0123456789") == std::string::npos);
    char* end = nullptr;
    const double value = std::strtod(word.c_str(), &end);
    return isNumber && *end == '\0' ? value : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

void checkNumber(const NumberLimits& limits, const std::string& word) {
    const double value = readNumber(limits, word);
    if (!(value >= limits.least && value <= limits.greatest)) {
        throw UsageError(fmt::format("{} must be a {}number from {} to {}, not '{}'", limits.option,
                                     limits.isWhole ? "whole " : "", limits.least, limits.greatest, word));
    }
}

} // namespace Vell::Tool
