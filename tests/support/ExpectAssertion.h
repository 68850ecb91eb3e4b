#pragma once

#include <gmock/gmock.h>

#include <csignal>
#include <string>

namespace Vell::Testing {

/// Matches the whole output of a failed assertion: exactly this line and nothing else.
inline testing::Matcher<const std::string&> isAssertionLine(const std::string& line) {
    return testing::Eq(line + "\n");
}

} // namespace Vell::Testing

/// Expects that the statement aborts with exactly `line` on standard error, for example
/// "Utils/Public/Ptr/CheckedPtr:206: assertion failed: _ptr". Use it in suites named ...DeathTest.
#define VELL_EXPECT_ASSERTION(statement, line)                                                               \
    EXPECT_EXIT(statement, testing::KilledBySignal(SIGABRT), Vell::Testing::isAssertionLine(line))
