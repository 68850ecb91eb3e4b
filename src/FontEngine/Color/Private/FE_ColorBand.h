#pragma once

#include <FontEngine/Color/Private/FE_ClipCoverage.h>
#include <FontEngine/Color/Private/FE_GradientRows.h>
#include <FontEngine/Color/Private/FE_PixelCompositing.h>

#include <vector>

namespace Vell::FontEngine::Internal {

/// Draws the operations of a colour glyph into a part of its image: it has the functions of a
/// ColorPaintTarget, for replay(). Layers and masks are no larger than that part.
class ColorBand {
public:
    /// `matrix` leads from font units to device pixels.
    ColorBand(FT_Library library, const ColorOutlines& outlines, const PixelMatrix& matrix,
              const PixelBox& box, RasterBudget& budget);

    void pushTransform(const cinder::MatrixAffine2<float>& transform);
    void popTransform() { _matrices.pop_back(); }

    void pushClip(unsigned short glyphIndex);
    void pushClip(const PaintBox& box);
    void popClip() { _clips.pop_back(); }

    void fill(const PaintColor& color);
    void fill(const LinearGradient& gradient);
    void fill(const RadialGradient& gradient);
    void fill(const SweepGradient& gradient);

    void pushGroup();
    void popGroup(CompositeMode mode);

    /// Returns the pixels of the band, from the top row on.
    const std::vector<ColorPixel>& getPixels() const { return _layers.front().pixels; }

private:
    struct Layer {
        PixelBox box;
        std::vector<ColorPixel> pixels;

        ColorPixel* getRow(int x, int y) { return pixels.data() + box.indexOf(x, y); }
    };

    const PixelClip& getClip() const { return _clips.back(); }
    bool spend(int workPerPixel);
    template <class Rows>
    void fillRows(const Rows& rows, int workPerPixel);

    FT_Library _library;
    const ColorOutlines& _outlines;
    RasterBudget& _budget;
    std::vector<PixelMatrix> _matrices;
    std::vector<PixelClip> _clips;
    std::vector<Layer> _layers;
};

} // namespace Vell::FontEngine::Internal
