#include "commands/NumberLimits.h"

#include "Errors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Vell::Tool {

namespace {

TEST(NumberLimits, IncludeTheirEndsAndNoNan) {
    EXPECT_NO_THROW(checkLimits(sizeLimits, sizeLimits.least));
    EXPECT_NO_THROW(checkLimits(sizeLimits, sizeLimits.greatest));
    for (const float value : {0.0F, -1.0F, 4097.0F, std::nanf(""), std::numeric_limits<float>::infinity()}) {
        EXPECT_THROW(checkLimits(sizeLimits, value), UsageError) << value;
    }
}

} // namespace

} // namespace Vell::Tool
