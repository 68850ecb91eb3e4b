#include <FontEngine/Color/Private/FE_ColorGlyphSource.h>

#include <FontEngine/Color/Private/FE_ColorBitmap.h>
#include <FontEngine/Color/Private/FE_ColorPaintWalker.h>
#include <FontEngine/Color/Private/FE_ColorRaster.h>

#include <cmath>

namespace Vell::FontEngine::Internal {

namespace {

constexpr PaintColor noForeground(0, 0, 0, 0);

/// The key of a glyph that does not use some of its colours.
ColorGlyphInfo reduceKey(const ColorGlyphInfo& info, ColorKind kind) {
    const bool hasPalette = kind == ColorKind::Layers;
    return ColorGlyphInfo(info.getFaceInfo(), info.getGlyphIndex(), info.getFontSize(), info.getScale(),
                          info.getDevicePixelRatio(), hasPalette ? info.getPalette() : nullptr, noForeground);
}

ColorKind getKindOf(const ColorPaintList* paints) {
    if (paints == nullptr) {
        return ColorKind::Bitmap;
    }
    return paints->usesForeground ? ColorKind::ForegroundLayers : ColorKind::Layers;
}

} // namespace

ColorGlyphSource::ColorGlyphSource(ColorFace& face, const ColorGlyphInfo& info)
    : _face(face)
    , _info(info)
    , _kind(findKind()) {
    if (_kind != ColorKind::ForegroundLayers) {
        _reducedKey.emplace(reduceKey(info, _kind));
    }
}

ColorKind ColorGlyphSource::findKind() {
    const unsigned long index = _info.getGlyphIndex();
    if (index >= static_cast<unsigned long>(_face.get()->num_glyphs)) {
        return ColorKind::Bitmap;
    }
    if (_face.getKind(index) == ColorKind::Unknown) {
        _paints = makePaints();
        _face.setKind(index, getKindOf(_paints.get()));
    }
    return _face.getKind(index);
}

std::shared_ptr<const ColorPaintList> ColorGlyphSource::makePaints() const {
    const std::shared_ptr<const ColorPalette>& palette = _info.getPalette();
    return makeColorPaintList(
        _face.get(), static_cast<unsigned int>(_info.getGlyphIndex()),
        resolvePalette(_face.get(), palette == nullptr ? ColorPalette{} : *palette, _info.getForeground()));
}

std::shared_ptr<const ColorPaintList> ColorGlyphSource::getPaints() {
    if (_paints == nullptr && _kind != ColorKind::Bitmap) {
        _paints = makePaints();
    }
    return _paints;
}

std::shared_ptr<const ColorGlyphImage> ColorGlyphSource::makeImage() {
    const float pixelsPerEm = _info.getPixelsPerEm();
    if (!(pixelsPerEm > 0.0F) || !std::isfinite(pixelsPerEm)) {
        return nullptr;
    }
    const auto paints = getPaints();
    if (paints == nullptr) {
        return makeColorBitmap(_face, _info.getGlyphIndex(), pixelsPerEm);
    }
    const float scale = pixelsPerEm / readUnitsPerEm(_face.get());
    return renderColorGlyph(_face.get(), *paints, {scale, 0.0F, 0.0F, scale, 0.0F, 0.0F},
                            maxColorGlyphPixels);
}

} // namespace Vell::FontEngine::Internal
