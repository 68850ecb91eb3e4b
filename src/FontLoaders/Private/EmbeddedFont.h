#pragma once

#include <FontLoaders/Public/FontBytes.h>

namespace Vell::FontLoaders::Internal {

/// A copy of the font that is built into this library; null where it was built without one.
FontBytes loadEmbeddedFont();

} // namespace Vell::FontLoaders::Internal
