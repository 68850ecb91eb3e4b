#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>

#include <string>

namespace Vell::Fuzz {

/// Follows the calls of a drawing. Throws Finding if a pop does not match the last push that is open, or if
/// a fill has no clip.
class PaintNesting : public FontEngine::ColorPaintTarget {
public:
    void pushTransform(const cinder::MatrixAffine2<float>& transform) override;
    void popTransform() override;
    void pushClip(unsigned short glyphIndex) override;
    void pushClip(const FontEngine::PaintBox& box) override;
    void popClip() override;
    void fill(const FontEngine::PaintColor& color) override;
    void fill(const FontEngine::LinearGradient& gradient) override;
    void fill(const FontEngine::RadialGradient& gradient) override;
    void fill(const FontEngine::SweepGradient& gradient) override;
    void pushGroup() override;
    void popGroup(FontEngine::CompositeMode mode) override;
    void drawImage(const FontEngine::BitmapGlyphImage& image, const FontEngine::PaintBox& box) override;

    /// Throws Finding unless everything has been popped.
    void check() const;

private:
    void pop(char kind);
    void checkFill(const FontEngine::ColorLine& line) const;

    std::string _open; // a letter for each push
};

} // namespace Vell::Fuzz
