#pragma once

#include "RecordingFontLoader.h"

#include <FontEngine/FontEngine.h>

namespace Vell::Tool {

/// How many faces the file has that a font of a factory over `loader` comes from. A loader of installed fonts
/// serves a face of a collection as a file of its own: the collection is what counts, as long as it is there.
long countFaces(const FontEngine::Font& font, const RecordingFontLoader& loader);

} // namespace Vell::Tool
