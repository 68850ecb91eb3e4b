#pragma once

#include <FontLoaders/Private/Variations/AxisValues.h>

#include <hb-ot.h>

#include <optional>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// What a variable font's cvar table says about these axis values: how far each of the control values moves
/// that glyph programs read (the table cvt), in font units. HarfBuzz leaves them at the default. No changes
/// if the font has no such tables; none at all if cvar is damaged.
std::optional<std::vector<float>> readControlValueChanges(hb_face_t* font, const AxisValues& values);

/// Adds the changes to the control values of an instance that HarfBuzz is building.
void varyControlValues(hb_face_t* instance, const std::vector<float>& changes);

} // namespace Vell::FontLoaders::Internal
