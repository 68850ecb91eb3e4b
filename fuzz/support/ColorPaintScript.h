#pragma once

#include <fuzz/support/ByteReader.h>

#include <CairoAdapter/Public/CairoPainter.h>

namespace Vell::Fuzz {

/// One step in the drawing of a colour glyph: 1 byte, then its operands. Pops without a push do nothing, and
/// what is pushed at the end stays so.
enum class ColorPaintStep {
    End,
    Transform, ///< 4 factors, 2 measures
    GlyphClip, ///< 1 byte
    BoxClip,   ///< 4 measures
    Group,
    Pop,      ///< the innermost push; of a group: 1 byte, the mode
    Solid,    ///< 4 bytes
    Linear,   ///< a line; 6 measures
    Radial,   ///< a line; 6 measures
    Sweep,    ///< a line; 2 measures, 2 angles of 2 bytes
    Image,    ///< a ScriptedGlyph; 4 measures
    Exception ///< ends the drawing with an exception
};
// A line: 1 byte with its extend mode and the number of its stops, 5 bytes for each stop.

/// Draws a colour glyph as the steps say. Returns whether it was drawn without the exception of a step.
bool drawScriptedColors(ByteReader& reader, CairoAdapter::CairoPainter& painter);

} // namespace Vell::Fuzz
