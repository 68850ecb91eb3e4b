#pragma once

#include <string>

namespace Vell::Testing {

/// Returns the text of the exception that a function throws. Exceptions of another type pass through.
template <class Exception, class Function>
std::string getErrorText(const Function& function) {
    try {
        function();
    } catch (const Exception& error) {
        return error.what();
    }
    return "no exception";
}

} // namespace Vell::Testing
