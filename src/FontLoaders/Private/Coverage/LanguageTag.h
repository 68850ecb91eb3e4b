#pragma once

#include <string>

namespace Vell::FontLoaders::Internal {

/// Returns fontconfig's name for the language of a BCP 47 tag: "zh-tw" for "zh-Hant", "de-at" for
/// "de-Latn-AT-1996". Empty if the tag names no language: the empty tag, "und" and private tags. Throws
/// FontLoaderException, with the tag in its text, if the tag does not have the syntax of BCP 47.
std::string findFontconfigLanguage(const std::string& tag);

} // namespace Vell::FontLoaders::Internal
