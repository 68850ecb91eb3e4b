#pragma once

#include <FontLoaders/Public/FontVariations.h>

#include <hb-ot.h>

#include <utility>
#include <vector>

/// The steps of makeFontInstance, which documents the errors.
namespace Vell::FontLoaders::Internal {

/// A value for each axis of a font, within the ends of the axis.
using AxisValues = std::vector<std::pair<hb_tag_t, float>>;

/// Empty for a static font without settings.
AxisValues resolveSettings(hb_face_t* face, const std::vector<AxisSetting>& settings);

/// Throws if the font has other outlines than those that `instantiate` can fix, or if it is made to consume
/// all memory or time.
void checkInstanceable(const NNPtr<const std::vector<unsigned char>>& bytes, hb_face_t* face);

/// The font file with all axes at these values.
std::vector<unsigned char> instantiate(hb_face_t* face, const AxisValues& values);

} // namespace Vell::FontLoaders::Internal
