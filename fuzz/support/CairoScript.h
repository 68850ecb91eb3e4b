#pragma once

#include <fuzz/support/ByteReader.h>

#include <Gfx/Public/Painter.h>
#include <cinder/Color.h>
#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

#include <cairo.h>

namespace Vell::Fuzz {

/// Coordinates in scripts are measures minus this number, so that negative coordinates are usual as well.
constexpr float originOfPoints = 96.0F;

/// The surface and the client's settings of the context: the 25 bytes before the operations.
struct CairoScene {
    explicit CairoScene(ByteReader& reader);

    /// Applies the client's settings: clip, operator and antialiasing.
    void prepare(cairo_t* context) const;

    // 2 bytes for the size, 1 for the format, 1 for flags: 1 a clip of whole pixels, 2 a clip of partial
    // pixels, 4 a round clip, 8 an operator other than over, 16 a device scale, 32 a device offset, 64 no
    // antialiasing, 128 a base transform other than the identity
    int width;
    int height;
    cairo_format_t format;
    unsigned int flags;
    cairo_operator_t blending;            // 1 byte
    cinder::Vec2<float> deviceScale;      // 2 factors of 2 bytes, at least 1/16
    cinder::Vec2<float> deviceOffset;     // 2 measures of 2 bytes
    cinder::MatrixAffine2<float> base;    // 3 factors: its diagonal and its shear
    float ratio;                          // a factor, at least 1/16
    cinder::ColorAT<unsigned char> color; // 4 bytes
};

cinder::ColorAT<unsigned char> takeColor(ByteReader& reader);

/// One step of a script: 1 byte, then its operands.
enum class CairoOperation {
    BeginPath,
    MoveTo,  ///< a point, two measures
    LineTo,  ///< a point
    QuadTo,  ///< two points
    CubicTo, ///< three points
    TakePath,
    Fill,
    Stroke,
    LineWidth, ///< a measure
    Glyph,     ///< see ScriptedGlyph; a point
    GlyphRun,  ///< 1 byte, how many; the glyphs with their points
    Color,     ///< 4 bytes
    Translate, ///< a point
    Scale,     ///< two factors
    Rotate,    ///< a factor
    Reset,
    Push,
    Pop,
    Break,     ///< 1 byte: a singular matrix, or the end of the surface
    ColorGlyph ///< see ColorPaintStep
};

CairoOperation takeCairoOperation(ByteReader& reader);

/// Whether the operation changes the transform and takes a number or two.
bool takesOperand(CairoOperation operation);
/// Performs one of the operations from Translate to Pop. The angle of Rotate is the operand's x.
void changeTransform(Gfx::Painter& painter, CairoOperation operation, const cinder::Vec2<float>& operand);

} // namespace Vell::Fuzz
