#pragma once

#include <Utils/Public/Exceptions.h>

#include <string>
#include <system_error>

namespace Vell::Tool {

/// The command failed. The text is one line for the user. Exit status 1.
class ToolError : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
};

/// The command line is wrong. Exit status 2.
class UsageError : public ToolError {
public:
    using ToolError::ToolError;
};

/// The text for an errno value.
inline std::string describeErrno(int error) {
    return std::generic_category().message(error);
}

} // namespace Vell::Tool
