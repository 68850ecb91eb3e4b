#include <FontLoaders/Private/FreeTypeErrors.h>

#include <fmt/format.h>

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontLoaders::Internal {

namespace {

struct ErrorText {
    int code;
    const char* text;
};

// FT_Error_String answers null in most builds of FreeType; its header lists the same texts for this use.
#undef FTERRORS_H_
#define FT_ERRORDEF(name, value, text) {value, text},
#define FT_ERROR_START_LIST constexpr ErrorText errorTexts[] = {
#define FT_ERROR_END_LIST                                                                                    \
    }                                                                                                        \
    ;
#include FT_ERRORS_H

const char* findText(int error) {
    for (const ErrorText& entry : errorTexts) {
        if (entry.code == error) {
            return entry.text;
        }
    }
    return "unknown error";
}

} // namespace

std::string describeFreeTypeError(const char* call, int error) {
    return fmt::format("{}() failed: {} (error {})", call, findText(error), error);
}

} // namespace Vell::FontLoaders::Internal
