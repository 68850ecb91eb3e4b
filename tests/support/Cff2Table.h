#pragma once

#include <support/ByteWriter.h>

namespace Vell::Testing {

/// PostScript outlines of a font with one axis. Every glyph is a box of 100 by 100 units at 100, 0, which is
/// 50 units further to the right at the end of the axis.
Bytes makeCff2Table(unsigned int glyphCount);

} // namespace Vell::Testing
