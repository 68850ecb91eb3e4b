#pragma once

#include <hb.h>

namespace Vell::TextLayout {

/// Whether a lookup of the table, GSUB or GPOS, may match any glyph at all: a sequence of glyph classes that
/// contains class 0, in which are all glyphs that have no other class, or a pair whose second glyph is in
/// class 0 and that moves glyphs. True for tables that are cut off.
bool mayMatchClassZero(hb_face_t* face, hb_tag_t table, unsigned int lookup);

} // namespace Vell::TextLayout
