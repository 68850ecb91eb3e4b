#pragma once

#include "TemporaryFolder.h"

#include <support/Process.h>

#include <string>
#include <vector>

namespace Vell::Tool::Testing {

using Vell::Testing::ProcessResult;
using Vell::Testing::quote;
using Vell::Testing::runShell;

/// Runs the built tool with the bytes on its standard input.
inline ProcessResult runTool(const std::vector<std::string>& arguments, const std::string& input = "") {
    return Vell::Testing::runProgram(FONTENGINE_TOOL, arguments, input);
}

} // namespace Vell::Tool::Testing
