#pragma once

#include <fontconfig/fontconfig.h>

#include <memory>
#include <string>
#include <vector>

/// fontconfig in C++: owning handles, strings, and the questions that the loader asks.
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

/// Convert strings to and from fontconfig's type. Both are UTF-8.
inline const FcChar8* toFontconfig(const std::string& text) {
    return reinterpret_cast<const FcChar8*>(text.c_str());
}
inline std::string fromFontconfig(const FcChar8* text) {
    return reinterpret_cast<const char*>(text);
}

/// Whether a name means a kind of typeface ("serif") and not a family.
bool isGenericFamily(const std::string& name);

/// The families that the configuration binds to `family` as the same. They have the same metrics, so one can
/// replace another without moving a line. In the order of preference, and not necessarily installed.
std::vector<std::string> getSameFamilies(FcConfig* config, const std::string& family);

/// The family of the font that matches a name best. An empty name states no preference. Fonts with outlines
/// are preferred. Empty if there are no fonts.
std::string getBestMatchingFamily(FcConfig* config, FcFontSet* fonts, const std::string& name);

/// The fonts in the order of preference for a name, which may be empty.
FontconfigPtr<FcFontSet> sortFonts(FcConfig* config, FcFontSet* fonts, const std::string& name);

/// What fontconfig calls the language of emoji, and the generic family that has them.
constexpr const char* emojiLanguage = "und-zsye";
constexpr const char* emojiFamily = "emoji";

/// Whose fonts are sorted: an empty family states no preference, an empty language is that of the process.
struct SortRequest {
    std::string family;
    std::string language; ///< as fontconfig names it
    bool bold;
    bool italic;
};

/// The fonts in the order of preference for a family, a language and a style.
FontconfigPtr<FcFontSet> sortFonts(FcConfig* config, FcFontSet* fonts, const SortRequest& request);

} // namespace Vell::FontLoaders::Internal
