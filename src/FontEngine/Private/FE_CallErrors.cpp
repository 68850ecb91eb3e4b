#include <FontEngine/Private/FE_CallErrors.h>

#include <FontLoaders/Public/Exceptions.h>

#include <fmt/format.h>

namespace Vell::FontEngine::Internal {

bool isCallDone(FT_Error error, const char* call) {
    if (error == FT_Err_Out_Of_Memory) {
        throw FontLoaders::FreeTypeException(
            fmt::format("{}() failed: out of memory (error {})", call, error));
    }
    return error == FT_Err_Ok;
}

} // namespace Vell::FontEngine::Internal
