#pragma once

#include <Utils/Public/Exceptions.h>

#include <string>

namespace Vell::Tool {

/// The command cannot do its work; the text is one line for the user. Exit status 1.
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
std::string describeErrno(int error);

} // namespace Vell::Tool
