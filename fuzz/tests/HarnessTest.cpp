#include <fuzz/support/Harness.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace Vell::Fuzz {

TEST(Harness, IsFoundByItsName) {
    EXPECT_THROW(runHarness("nothing", {}), std::invalid_argument);
    for (const char* const name : {"font", "text", "cache", "sfnt", "cairo", "shape", "vary"}) {
        EXPECT_NO_THROW(runHarness(name, {})) << name;
    }
}

} // namespace Vell::Fuzz
