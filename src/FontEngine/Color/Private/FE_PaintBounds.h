#pragma once

#include <FontEngine/Color/Private/FE_ColorPaintList.h>

namespace Vell::FontEngine::Internal {

/// What the fills of a colour glyph cover at most, in font units.
struct PaintExtent {
    PaintBox box;      ///< infinite if nothing limits the fills; right < left if there are none
    bool hasBareFills; ///< whether a fill has no clip at all: a composite mode may still limit what it covers
};

PaintExtent measurePaint(const PaintOperations& operations, const ColorOutlines& outlines);

} // namespace Vell::FontEngine::Internal
