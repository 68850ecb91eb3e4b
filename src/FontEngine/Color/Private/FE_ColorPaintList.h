#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/Color/Private/FE_ColorOutlines.h>

#include <utility>
#include <variant>
#include <vector>

namespace Vell::FontEngine::Internal {

struct PushTransform {
    cinder::MatrixAffine2<float> transform;
};
struct PopTransform {};
struct PushGlyphClip {
    unsigned short glyphIndex;
};
struct PushBoxClip {
    PaintBox box;
};
struct PopClip {};
struct PushGroup {};
struct PopGroup {
    CompositeMode mode;
};

/// A call of a ColorPaintTarget; a colour or a gradient stands for a fill.
using PaintOperation =
    std::variant<PushTransform, PopTransform, PushGlyphClip, PushBoxClip, PopClip, PushGroup, PopGroup,
                 PaintColor, LinearGradient, RadialGradient, SweepGradient>;
using PaintOperations = std::vector<PaintOperation>;

/// The drawing of a colour glyph, checked completely: every outline that it asks for can be loaded, it covers
/// a finite area, and its pushes and pops are paired.
///
/// It does not depend on the face any more and never changes, so any thread may read it.
struct ColorPaintList {
    PaintOperations operations;
    ColorOutlines outlines;
    PaintBox bounds;     ///< of what the operations can cover; outside, the glyph is transparent
    bool usesForeground; ///< whether another foreground makes another drawing

    /// Draws the glyph.
    void paint(ColorPaintTarget& target) const;
};

/// Calls a ColorPaintTarget, or anything with functions of the same names, for each operation.
template <class Target>
class PaintReplay {
public:
    explicit PaintReplay(Target& target)
        : _target(target) {}

    void operator()(const PushTransform& push) { _target.pushTransform(push.transform); }
    void operator()(PopTransform) { _target.popTransform(); }
    void operator()(PushGlyphClip push) { _target.pushClip(push.glyphIndex); }
    void operator()(const PushBoxClip& push) { _target.pushClip(push.box); }
    void operator()(PopClip) { _target.popClip(); }
    void operator()(PushGroup) { _target.pushGroup(); }
    void operator()(PopGroup pop) { _target.popGroup(pop.mode); }
    template <class Fill>
    void operator()(const Fill& fill) {
        _target.fill(fill);
    }

private:
    Target& _target;
};

template <class Target>
void replay(const PaintOperations& operations, Target& target) {
    PaintReplay<Target> visitor(target);
    for (const PaintOperation& operation : operations) {
        std::visit(visitor, operation);
    }
}

} // namespace Vell::FontEngine::Internal
