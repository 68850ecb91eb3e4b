#include <FontEngine/Color/FE_DrawColorGlyphs.h>

#include <FontEngine/Private/FE_GlyphRunScope.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <cmath>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

namespace {

struct PlacedImage {
    std::shared_ptr<const ColorGlyphImage> image;
    cinder::Vec2<float> position; // of the top left corner
};

/// The position of an edge that is `offset` device pixels away from the pen, on a whole device pixel.
float place(float pen, int offset, float devicePixelRatio) {
    return (std::floor(pen * devicePixelRatio + 0.5F) + static_cast<float>(offset)) / devicePixelRatio;
}

PlacedImage placeImage(std::shared_ptr<const ColorGlyphImage> image, const cinder::Vec2<float>& pen,
                       float devicePixelRatio) {
    const cinder::Vec2<float> position(place(pen.x, image->left, devicePixelRatio),
                                       place(pen.y, -image->top, devicePixelRatio));
    return {std::move(image), position};
}

} // namespace

std::size_t drawColorGlyphs(const ColorGlyphs& colorGlyphs, const ColorGlyphStyle& style,
                            BitmapGlyphPainter& painter, PlacedGlyph* glyphs, std::size_t count) {
    auto* const colorPainter = dynamic_cast<ColorGlyphPainter*>(&painter);
    if (count == 0 || colorPainter == nullptr || !colorGlyphs.hasColors(*style.face)) {
        return count;
    }
    std::vector<PlacedImage> images;
    images.reserve(count);
    std::size_t others = 0;
    for (std::size_t i = 0; i != count; ++i) {
        const PlacedGlyph glyph = glyphs[i];
        const ColorGlyphInfo info(style.faceInfo, glyph.glyphIndex, style.fontSize, style.scale,
                                  style.devicePixelRatio, style.palette, style.foreground);
        auto image = colorGlyphs.getImage(info, style.face);
        if (image == nullptr) {
            glyphs[others++] = glyph;
        } else if (image->buffer != nullptr) {
            images.push_back(placeImage(std::move(image), glyph.position, style.devicePixelRatio));
        }
    }
    if (!images.empty()) {
        const Internal::GlyphRunScope scope(painter);
        for (const PlacedImage& placed : images) {
            colorPainter->drawColorGlyph(placed.image, placed.position);
        }
    }
    return others;
}

} // namespace Vell::FontEngine
