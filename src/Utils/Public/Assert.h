#pragma once

#include <Utils/Public/Export.h>

namespace Vell {

/// Reports a programming error and aborts the process: writes the one line
/// `FILE:LINE: assertion failed: EXPRESSION` to standard error.
///
/// `file` and `line` are fixed identifiers of the check, by which crash reports are grouped. They stay the
/// same when the code moves. `file` is a source path without its extension. Any thread may call.
[[noreturn]] VELL_API void doFailAssert(const char* file, int line, const char* expression);

/// The same, with an explanation: `FILE:LINE: assertion failed: EXPRESSION (MESSAGE)`.
[[noreturn]] VELL_API void doFailAssert(const char* file, int line, const char* expression,
                                        const char* message);

} // namespace Vell
