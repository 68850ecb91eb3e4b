#include <FontEngine/Renderer/FE_RasterTextPainter.h>

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_GlyphRunScope.h>
#include <FontEngine/Private/FE_GlyphService.h>
#include <FontEngine/Private/FE_GlyphSources.h>
#include <FontEngine/Renderer/FE_RasterSpace.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <cmath>
#include <cstdint>
#include <optional>

namespace Vell::FontEngine {

namespace {

void setToBitmap(BitmapGlyphImage& view, const FT_Bitmap& bitmap) {
    view.rows = bitmap.rows;
    view.width = bitmap.width;
    view.pitch = bitmap.pitch;
    view.buffer = bitmap.buffer;
    view.pixelMode = bitmap.pixel_mode;
}

float getLeft(const BitmapGlyph& glyph, float devicePixelRatio) {
    const float x = static_cast<float>(glyph.getData()->left) / devicePixelRatio + glyph.getPos().x;
    return Internal::isDense(devicePixelRatio) ? x : std::floor(x);
}

/// Snaps up to a whole unit unless the fraction is about three quarters or more. Such glyphs would move up by
/// almost a unit and stand out of their line. The bit pattern of the limit is 3F3D7E02.
float snapTop(float y) {
    constexpr float keptFraction = 0.7402039766311646F;
    const float whole = std::floor(y);
    return y - whole < keptFraction ? whole : y;
}

float getTop(const BitmapGlyph& glyph, const FT_BBox& box, float devicePixelRatio) {
    // The box cancels out, whatever a client has put into it. The sum is the negative top, modulo 2^64.
    const auto yMin = static_cast<std::uint64_t>(box.yMin);
    const auto yMax = static_cast<std::uint64_t>(box.yMax);
    const auto top = static_cast<std::uint64_t>(static_cast<std::int64_t>(glyph.getData()->top));
    const auto offset = static_cast<std::int64_t>((yMax - yMin) - top + yMin - yMax);
    return snapTop(static_cast<float>(offset) / devicePixelRatio + glyph.getPos().y);
}

/// The coloured images of a run, like those of FontFace::getGlyphBitmapWithSubpixels. The key in a glyph
/// names the right face even if the glyph comes from a fallback font.
class RunImages {
public:
    /// If `keepsFactory` is set, this object keeps the factory alive from its first image on. A reference to
    /// the factory for each image would take about as long as looking the image up.
    RunImages(const Font& font, const cinder::ColorAT<unsigned char>& color, bool keepsFactory)
        : _font(font)
        , _color(color)
        , _keepsFactory(keepsFactory) {}

    /// Null if the factory is gone.
    Internal::ImagePtr share(const BitmapGlyph& glyph) {
        if (_factory == nullptr) {
            _factory = _font.getFace()->shareFontFactory();
        }
        Internal::ImagePtr image =
            _factory != nullptr ? _factory->getGlyphService().copyImage(_strike, glyph, _color) : nullptr;
        if (!_keepsFactory) {
            _factory.reset();
        }
        return image;
    }

private:
    const Font& _font;
    const cinder::ColorAT<unsigned char>& _color;
    bool _keepsFactory;
    Internal::FactoryPin _factory;
    std::optional<Internal::ImageCache::Handle> _strike;
};

} // namespace

RasterTextPainter::RasterTextPainter(Gfx::Painter& painter, BitmapGlyphPainter& glyphPainter,
                                     bool flipVertically)
    : _painter(painter)
    , _glyphPainter(glyphPainter)
    , _flipVertically(flipVertically) {}

void RasterTextPainter::drawText(boost::string_ref text, const NNPtr<const Gfx::ExtFontInfo>& extFontInfo,
                                 const Gfx::FontMetrics& fontMetrics,
                                 const cinder::ColorAT<unsigned char>& color, float devicePixelRatio) {
    _painter.pushTransform();
    const auto* const font = dynamic_cast<const Font*>(&fontMetrics);
    if (font == nullptr) {
        doFailAssert("FontEngine/Renderer/FE_RasterTextPainter", 136, "font");
    }
    const RasterSpace space = getRasterSpace(_painter);
    const BitmapGlyphRun run = createGlyphRun(text, extFontInfo, *font, devicePixelRatio, space.scale);

    enterRasterSpace(_painter, space);
    drawGlyphRun(run, *font, color, devicePixelRatio);
    _painter.popTransform(); // no guard, because after an exception the owner restores the painter
}

void RasterTextPainter::drawGlyphRun(const BitmapGlyphRun& run, const Font& font,
                                     const cinder::ColorAT<unsigned char>& color, float devicePixelRatio) {
    if (run.getGlyphs().empty()) {
        return;
    }
    const Internal::GlyphRunScope scope(_glyphPainter);
    RunImages images(font, color, /*keepsFactory=*/scope.hasRunPainter());
    BitmapGlyphImage view; // one for all glyphs
    for (const BitmapGlyph& glyph : run.getGlyphs()) {
        const FT_Bitmap& bitmap = glyph.getData()->bitmap;
        const cinder::Vec2<float> position(getLeft(glyph, devicePixelRatio),
                                           getTop(glyph, run.getBBox(), devicePixelRatio));
        if (bitmap.pixel_mode == FT_PIXEL_MODE_LCD) {
            const Internal::ImagePtr image = images.share(glyph);
            _glyphPainter.drawGlyph(derefNN(image.get()), position);
        } else {
            setToBitmap(view, bitmap);
            _glyphPainter.drawGlyph(view, position);
        }
    }
}

} // namespace Vell::FontEngine
