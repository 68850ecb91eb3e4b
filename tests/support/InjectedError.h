#pragma once

#include <stdexcept>

namespace Vell::Testing {

/// What the test doubles throw when they are told to: a type that no library throws by itself.
class InjectedError : public std::runtime_error {
public:
    InjectedError()
        : std::runtime_error("injected by the test") {}
};

} // namespace Vell::Testing
