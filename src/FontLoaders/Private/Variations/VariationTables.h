#pragma once

#include <FontLoaders/Public/FontVariations.h>

#include <hb-ot.h>

#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// The axes as HarfBuzz reads them. Empty for a static font and for one with more than maxAxes.
std::vector<hb_ot_var_axis_info_t> readAxes(hb_face_t* face);

/// Tags as text: without trailing spaces, of at most four characters.
std::string getTagText(hb_tag_t tag);
hb_tag_t makeTag(const std::string& text);

FontVariations readVariations(hb_face_t* face);

} // namespace Vell::FontLoaders::Internal
