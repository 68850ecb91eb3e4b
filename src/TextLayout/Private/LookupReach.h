#pragma once

#include <TextLayout/Private/HarfBuzzHandles.h>

#include <hb.h>

namespace Vell::TextLayout {

/// The glyphs that the lookups of a shape plan look at or change: each glyph that is in the coverage of a
/// lookup, or in a sequence that a lookup matches. A glyph that is not in the set, such as the space of most
/// fonts, divides a text into parts that do not influence each other.
///
/// Null if there is no telling: if a lookup matches glyphs by what they are not (class 0 of a table of
/// classes), or if the face positions its glyphs by other tables. `properties` are those that the plan was
/// made with.
HarfBuzzPtr<hb_set_t> findReachOfLookups(hb_face_t* face, const hb_segment_properties_t& properties,
                                         hb_shape_plan_t* plan);

} // namespace Vell::TextLayout
