#pragma once

#include <FontLoaders/Private/Variations/AxisValues.h>

#include <hb-ot.h>

namespace Vell::FontLoaders::Internal {

/// Adds what a variable font's MVAR table says about these values to the metrics of its instance: ascender,
/// descender, line gap, underline and so on. HarfBuzz leaves them at the default. `instance` is a face that
/// HarfBuzz is building.
void varyLineMetrics(hb_face_t* font, const AxisValues& values, hb_face_t* instance);

} // namespace Vell::FontLoaders::Internal
