#pragma once

#include <FontLoaders/Private/FontconfigHandles.h>

#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// Whether a name stands for a kind of typeface ("serif") and not for a family.
bool isGenericFamily(const std::string& name);

/// The families that the configuration binds to `family` as the same: those made to the same measures, so
/// that one replaces the other without moving a line. Installed or not, in the order of preference.
std::vector<std::string> getSameFamilies(FcConfig* config, const std::string& family);

/// The family of the best match for a name among these fonts. The name may be empty for no wish at all; the
/// answer is empty when there are no fonts. Fonts with outlines come first.
std::string getBestMatchingFamily(FcConfig* config, FcFontSet* fonts, const std::string& name);

/// These fonts in the order of preference for a name, which may be empty.
FontconfigPtr<FcFontSet> sortFonts(FcConfig* config, FcFontSet* fonts, const std::string& name);

} // namespace Vell::FontLoaders::Internal
