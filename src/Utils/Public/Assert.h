#pragma once

#include <Utils/Public/Export.h>

namespace Vell {

/// Reports a programming error and aborts the process: writes the one line
/// `FILE:LINE: assertion failed: EXPRESSION` to standard error.
///
/// `file` and `line` name the check, not the place where its code stands today: they are fixed identifiers by
/// which crash reports are grouped, `file` being a source path without its extension. Any thread may call.
[[noreturn]] VELL_API void doFailAssert(const char* file, int line, const char* expression);

/// The same with an explanation: `FILE:LINE: assertion failed: EXPRESSION (MESSAGE)`.
[[noreturn]] VELL_API void doFailAssert(const char* file, int line, const char* expression,
                                        const char* message);

} // namespace Vell
