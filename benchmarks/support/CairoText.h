#pragma once

#include "Scene.h"

namespace Vell::Benchmarks {

/// Makes a context for cairo's own text functions, with the font of the scene at its size in device pixels
/// and without hinting: glyphs are at fractions of a pixel, as in the engine.
CairoAdapter::ContextPtr makeTextContext(cairo_surface_t* page, const Scene& scene);

} // namespace Vell::Benchmarks
