#pragma once

#include <fontconfig/fontconfig.h>

#include <memory>
#include <string>

namespace Vell::FontLoaders::Internal {

struct FontconfigDeleter {
    void operator()(FcConfig* config) const { FcConfigDestroy(config); }
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
    void operator()(FcCharSet* characters) const { FcCharSetDestroy(characters); }
};

/// Owns one reference to an object of fontconfig.
template <class T>
using FontconfigPtr = std::unique_ptr<T, FontconfigDeleter>;

/// Strings as fontconfig takes and gives them; both are UTF-8.
inline const FcChar8* toFontconfig(const std::string& text) {
    return reinterpret_cast<const FcChar8*>(text.c_str());
}
inline std::string fromFontconfig(const FcChar8* text) {
    return reinterpret_cast<const char*>(text);
}

} // namespace Vell::FontLoaders::Internal
