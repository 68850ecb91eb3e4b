#pragma once

#include <iosfwd>

namespace Vell::Tool {

/// Exit statuses.
constexpr int succeeded = 0;
constexpr int failed = 1;
constexpr int wrongUse = 2;
/// The two files that were compared are good, and not the same. Not 1 as with other programs: a script could
/// not tell it from a file that is missing.
constexpr int different = 3;

/// Runs the command line, `argv[0]` included, and returns the exit status. Whatever goes wrong is told in one
/// line on `err`.
int runTool(int argc, const char* const* argv, std::istream& in, std::ostream& out, std::ostream& err);

} // namespace Vell::Tool
