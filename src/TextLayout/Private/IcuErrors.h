#pragma once

#include <TextLayout/Public/TextLayoutException.h>

#include <unicode/utypes.h>

#include <new>
#include <string>

namespace Vell::TextLayout {

/// Throws std::bad_alloc or TextLayoutException for an error; warnings are none.
inline void throwIfFailed(const char* call, UErrorCode status) {
    if (status == U_MEMORY_ALLOCATION_ERROR) {
        throw std::bad_alloc();
    }
    if (U_FAILURE(status)) {
        throw TextLayoutException(std::string(call) + ": " + u_errorName(status));
    }
}

} // namespace Vell::TextLayout
