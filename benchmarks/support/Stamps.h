#pragma once

#include "Scene.h"

#include <FontEngine/FontEngine.h>

#include <cstdint>
#include <vector>

namespace Vell::Benchmarks {

/// A grey bitmap at its place on a page, in device pixels. Whoever owns the bitmap keeps it.
struct Stamp {
    const unsigned char* coverage;
    std::ptrdiff_t pitch;
    int width;
    int rows;
    int x;
    int y;
};

/// Notes the coverage that the engine hands out, and where; coloured images are left out. The glyph cache of
/// a factory that is not flushed keeps the bitmaps.
class StampRecorder : public FontEngine::BitmapGlyphPainter {
public:
    StampRecorder(const Gfx::Painter& painter, int ratio);

    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position) override;

    const std::vector<Stamp>& getStamps() const { return _stamps; }

private:
    const Gfx::Painter& _painter;
    float _ratio;
    std::vector<Stamp> _stamps;
};

/// Blend a stamp in an opaque colour; both give the same pixels. It must lie inside of the page.
void blitPlainly(unsigned char* page, std::ptrdiff_t stride, const Stamp& stamp, std::uint32_t colour);
void blitBySse2(unsigned char* page, std::ptrdiff_t stride, const Stamp& stamp, std::uint32_t colour);

} // namespace Vell::Benchmarks
