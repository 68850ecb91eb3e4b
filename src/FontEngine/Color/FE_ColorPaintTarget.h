#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>
#include <cinder/MatrixAffine2.h>
#include <cinder/Vector.h>

#include <vector>

namespace Vell::FontEngine {

/// A colour with straight alpha, not premultiplied.
using PaintColor = cinder::ColorAT<unsigned char>;

struct ColorStop {
    float offset; ///< along the gradient, from 0 to 1
    PaintColor color;
};

/// What a gradient shows before its first stop and behind its last one.
enum class GradientExtend : unsigned char { Pad, Repeat, Reflect };

/// The colours of a gradient, two at least. Stops are in ascending order; the first is at 0 and the last
/// at 1. Of several stops with one offset, the first is the colour before it and the last the colour behind
/// it.
struct ColorLine {
    std::vector<ColorStop> stops;
    GradientExtend extend;
};

/// The colour is constant along lines parallel to the one from `p0` to `p2`. Offset 0 is at `p0` and offset 1
/// at `p1`. The three points never lie on one line.
struct LinearGradient {
    ColorLine line;
    cinder::Vec2<float> p0;
    cinder::Vec2<float> p1;
    cinder::Vec2<float> p2;
};

/// Circles that lead from one circle (offset 0) to another (offset 1). Where several of them go through a
/// point, the one with the greatest offset has the colour; points that none reaches stay transparent. The
/// circles differ, and no radius is negative.
struct RadialGradient {
    ColorLine line;
    cinder::Vec2<float> center0;
    float radius0;
    cinder::Vec2<float> center1;
    float radius1;
};

/// Colours around a centre. Angles are in radians, counter-clockwise from the positive x axis. A point has
/// the angle from 0 to 2 pi under which the centre sees it; the line is extended where the two angles leave a
/// part of that range. The angles may lie outside it, the second one may be smaller, and only if the line is
/// padded may both be equal.
struct SweepGradient {
    ColorLine line;
    cinder::Vec2<float> center;
    float startAngle; ///< of offset 0
    float endAngle;   ///< of offset 1
};

/// How a group is combined with what lies below it. The order is that of the font format.
enum class CompositeMode : unsigned char {
    Clear,
    Source,
    Destination,
    SourceOver,
    DestinationOver,
    SourceIn,
    DestinationIn,
    SourceOut,
    DestinationOut,
    SourceAtop,
    DestinationAtop,
    Xor,
    Plus,
    Screen,
    Overlay,
    Darken,
    Lighten,
    ColorDodge,
    ColorBurn,
    HardLight,
    SoftLight,
    Difference,
    Exclusion,
    Multiply,
    Hue,
    Saturation,
    Color,
    Luminosity
};

/// A rectangle in font units, y pointing up.
struct PaintBox {
    float left;
    float bottom;
    float right;
    float top;
};

/// Receives the drawing of a colour glyph, one operation after the other. Coordinates are in font units, y
/// pointing up, with the glyph's origin at (0, 0), under the transforms that are pushed at that moment.
///
/// Pushes and pops are paired and nest properly, also if a call throws: then nothing follows, and the target
/// restores itself. A fill covers the current clip, however large it is; there is always at least one.
///
/// A vector painter implements it to draw colour glyphs as vectors.
class VELL_API ColorPaintTarget {
public:
    virtual ~ColorPaintTarget();

    /// Applies `transform` to what follows, before the transforms that are already there.
    virtual void pushTransform(const cinder::MatrixAffine2<float>& transform) = 0;
    virtual void popTransform() = 0;

    /// Limits what follows to the outline of a glyph of the same face.
    virtual void pushClip(unsigned short glyphIndex) = 0;
    virtual void pushClip(const PaintBox& box) = 0;
    virtual void popClip() = 0;

    virtual void fill(const PaintColor& color) = 0;
    virtual void fill(const LinearGradient& gradient) = 0;
    virtual void fill(const RadialGradient& gradient) = 0;
    virtual void fill(const SweepGradient& gradient) = 0;

    /// Draws what follows on a transparent layer of its own. The clips that are there limit the layer as a
    /// whole, when it is combined, so that their smooth edges count once.
    virtual void pushGroup() = 0;
    /// Combines the layer, as the source, with what was drawn before pushGroup, as the destination. Within
    /// the clips, modes such as SourceIn also change what the layer leaves transparent.
    virtual void popGroup(CompositeMode mode) = 0;

    /// Draws an image of premultiplied BGRA (FT_PIXEL_MODE_BGRA) over `box`. Only glyphs that are bitmaps in
    /// the font call it, once and with nothing else.
    virtual void drawImage(const BitmapGlyphImage& image, const PaintBox& box) = 0;
};

} // namespace Vell::FontEngine
