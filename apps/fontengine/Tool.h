#pragma once

#include <iosfwd>

namespace Vell::Tool {

/// Exit statuses.
constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int wrongUse = 2;
/// Both files of a comparison are good, but they differ. Other programs return 1, but then a script could not
/// tell a difference from a missing file.
constexpr int different = 3;

/// Runs the command line, `argv[0]` included, and returns the exit status. Reports any failure in one line on
/// `err`.
int runTool(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err);

} // namespace Vell::Tool
