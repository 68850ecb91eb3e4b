#pragma once

#include <FontLoaders/Public/FontVariations.h>

#include <hb-ot.h>

#include <utility>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// A value for each axis of a font, within the ends of the axis.
using AxisValues = std::vector<std::pair<hb_tag_t, float>>;

/// The values that settings give to the axes. Empty for a static font without settings. Errors: those that
/// makeFontInstance documents for settings.
AxisValues resolveSettings(hb_face_t* face, const std::vector<AxisSetting>& settings);

} // namespace Vell::FontLoaders::Internal
