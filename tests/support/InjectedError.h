#pragma once

#include <stdexcept>

namespace Vell::Testing {

/// The exception that test doubles throw on request. No library throws it.
class InjectedError : public std::runtime_error {
public:
    InjectedError()
        : std::runtime_error("injected by the test") {}
};

} // namespace Vell::Testing
