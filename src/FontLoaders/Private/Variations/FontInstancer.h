#pragma once

#include <FontLoaders/Private/Variations/AxisValues.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <hb-ot.h>

#include <vector>

namespace Vell::FontLoaders::Internal {

/// The font file with all axes at these values, by HarfBuzz's subsetter. `bytes` are those of `face`. Throws
/// if the font has other outlines than TrueType's, or if it is made to consume all memory or time: see
/// makeFontInstance.
std::vector<unsigned char> makeStaticFont(const NNPtr<const std::vector<unsigned char>>& bytes,
                                          hb_face_t* face, const AxisValues& values);

} // namespace Vell::FontLoaders::Internal
