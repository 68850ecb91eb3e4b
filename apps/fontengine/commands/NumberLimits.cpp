#include "commands/NumberLimits.h"

#include "Errors.h"

#include <fmt/format.h>

namespace Vell::Tool {

void checkLimits(const NumberLimits& limits, float value) {
    if (!(value >= limits.least && value <= limits.greatest)) {
        throw UsageError(fmt::format("{} must be a number from {} to {}, not {}", limits.option, limits.least,
                                     limits.greatest, value));
    }
}

} // namespace Vell::Tool
