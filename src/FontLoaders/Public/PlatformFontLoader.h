#pragma once

#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <string>

namespace Vell::FontLoaders {

/// A loader of the fonts that are installed on this machine, as fontconfig knows them.
///
/// `defaultFaceName` is the family that loadDefaultFont prefers. Making the loader reads nothing; fontconfig
/// is initialised by the first question. The loader may be used from several threads at once.
VELL_API CheckedPtrImpl<FontLoader, false>
createPlatformDefaultFontLoader(const std::string& defaultFaceName);

} // namespace Vell::FontLoaders
