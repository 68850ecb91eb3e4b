#pragma once

#include <FontLoaders/Public/FontLoader.h>

namespace Vell::FontLoaders::Internal {

/// The loader behind one from createVariationLoader. Null for all other loaders.
const FontLoader* findLoaderBehind(const FontLoader& loader);

/// The variable font whose instance these bytes are, or else the bytes. `loader` is one from
/// createVariationLoader.
FontBytes findVariableFont(const FontLoader& loader, const FontBytes& bytes);

} // namespace Vell::FontLoaders::Internal
