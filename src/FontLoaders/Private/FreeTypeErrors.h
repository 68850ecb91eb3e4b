#pragma once

#include <string>

namespace Vell::FontLoaders::Internal {

/// "CALL() failed: FreeType's text for the error (error CODE)".
std::string describeFreeTypeError(const char* call, int error);

} // namespace Vell::FontLoaders::Internal
