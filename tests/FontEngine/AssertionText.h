#pragma once

#include <gmock/gmock.h>

#include <string>

namespace Vell::Testing {

/// Matches the output of a process that a failed assertion aborted: exactly this line.
inline testing::Matcher<const std::string&> printsAssertion(const std::string& location,
                                                            const std::string& expression) {
    return testing::HasSubstr(location + ": assertion failed: " + expression + "\n");
}

inline testing::Matcher<const std::string&> printsNullDereference() {
    return printsAssertion("Utils/Public/Ptr/CheckedPtr:145", "_ptr");
}

/// Returns a moved-from pointer, the only kind of CheckedPtrImpl that is null.
template <class Pointer>
Pointer makeMovedFrom(Pointer pointer) {
    const Pointer taken = std::move(pointer);
    return pointer; // NOLINT(bugprone-use-after-move): this is intended
}

} // namespace Vell::Testing
