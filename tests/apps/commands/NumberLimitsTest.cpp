#include "commands/NumberLimits.h"

#include "Errors.h"

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

TEST(NumberLimits, IncludeTheirEndsAndNoNan) {
    for (const char* word : {"0.1", "4096", "1e3", "+12"}) {
        EXPECT_NO_THROW(checkNumber(sizeLimits, word)) << word;
    }
    for (const char* word : {"0", "-1", "4097", "nan", "inf", "", "big", "12x"}) {
        EXPECT_THROW(checkNumber(sizeLimits, word), UsageError) << word;
    }
}

TEST(NumberLimits, RefuseFractionsOfWhatIsCounted) {
    EXPECT_NO_THROW(checkNumber(passLimits, "1000000"));
    for (const char* word : {"0", "1.5", "-1", "1e3", " 1", "1000001"}) {
        EXPECT_THROW(checkNumber(passLimits, word), UsageError) << word;
    }
}

TEST(NumberLimits, NameTheWordAsItWasTyped) {
    try {
        checkNumber(sizeLimits, "1e30");
        FAIL();
    } catch (const UsageError& error) {
        EXPECT_STREQ("--size must be a number from 0.1 to 4096, not '1e30'", error.what());
    }
}

} // namespace

} // namespace Vell::Tool
