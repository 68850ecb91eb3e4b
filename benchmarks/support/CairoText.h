#pragma once

#include "Scene.h"

namespace Vell::Benchmarks {

/// A context that draws by cairo's own text functions in the font of a scene, at the size in device pixels,
/// without hinting: glyphs stand at fractions of a pixel, as the engine's do.
CairoAdapter::ContextPtr makeTextContext(cairo_surface_t* page, const Scene& scene);

} // namespace Vell::Benchmarks
