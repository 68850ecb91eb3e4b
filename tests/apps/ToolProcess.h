#pragma once

#include <support/Process.h>
#include <support/TemporaryFolder.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// Runs the built tool with the bytes on its standard input.
inline ProcessResult runTool(const std::vector<std::string>& arguments, const std::string& input = "") {
    return Vell::Testing::runProgram(FONTENGINE_TOOL, arguments, input);
}

} // namespace Vell::Testing
