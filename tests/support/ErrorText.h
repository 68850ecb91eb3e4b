#pragma once

#include <string>

namespace Vell::Testing {

/// The text of the exception that a function ends with; another exception passes through.
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
