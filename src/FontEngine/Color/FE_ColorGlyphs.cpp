#include <FontEngine/Color/FE_ColorGlyphs.h>

#include <FontEngine/Color/Private/FE_ColorBitmap.h>
#include <FontEngine/Color/Private/FE_ColorFace.h>
#include <FontEngine/Color/Private/FE_ColorGlyphSource.h>
#include <FontEngine/Private/FE_LockedCache.h>

#include <utility>

namespace Vell::FontEngine {

namespace Internal {

using ColorImagePtr = std::shared_ptr<const ColorGlyphImage>;

struct ColorGlyphCache : LockedCache<ColorGlyphInfo, ColorImagePtr, ColorGlyphInfoHash> {};

} // namespace Internal

using Internal::ColorFace;
using Internal::ColorGlyphCache;
using Internal::ColorGlyphSource;
using Internal::ColorImagePtr;
using Internal::RecursiveLock;

namespace {

std::uint64_t weigh(const ColorGlyphImage* image) {
    constexpr std::uint64_t recordBytes = 256; // the key, the image's record, and what the cache adds
    return recordBytes +
           (image == nullptr ? 0 : std::uint64_t{image->rows} * static_cast<unsigned int>(image->pitch));
}

/// FreeType reads the tables of colours when it opens a face.
bool mayHaveColors(const FontFace& face) {
    return FT_HAS_COLOR(face.getHandle().get());
}

/// The caller holds the lock of the colour glyphs.
ColorFace& openColorFace(const FontFace& face) {
    std::shared_ptr<ColorFace>& opened = face.getColorFace();
    if (opened == nullptr) {
        opened = std::make_shared<ColorFace>(face.getFaceData());
    }
    return *opened;
}

ColorGlyphInfo resize(const ColorGlyphInfo& info, float pixelsPerEm) {
    return ColorGlyphInfo(info.getFaceInfo(), info.getGlyphIndex(), pixelsPerEm, 1.0F, 1.0F, nullptr, {});
}

/// The rectangle of an unscaled bitmap in font units.
PaintBox getBox(const ColorGlyphImage& image, float pixelsPerEm, float unitsPerEm) {
    const float scale = unitsPerEm / pixelsPerEm;
    const auto left = static_cast<float>(image.left);
    const auto top = static_cast<float>(image.top);
    return {left * scale, (top - static_cast<float>(image.rows)) * scale,
            (left + static_cast<float>(image.width)) * scale, top * scale};
}

ColorImagePtr findImage(const ColorGlyphCache& cache, const ColorGlyphInfo& info, const FontFace& face) {
    const RecursiveLock lock(cache.getMutex());
    ColorGlyphSource source(openColorFace(face), info);
    const auto makeNode = [&] {
        ColorImagePtr image = source.makeImage();
        const std::uint64_t bytes = weigh(image.get());
        return ColorGlyphCache::Node(std::move(image), bytes);
    };
    return cache.getOrPut(source.getKey(), makeNode).getValue();
}

/// What draws a glyph, without the cache and the face.
struct Drawing {
    std::shared_ptr<const Internal::ColorPaintList> paints;
    ColorImagePtr bitmap; // if there are no paints
    float pixelsPerEm;    // of the bitmap
};

Drawing findDrawing(const ColorGlyphCache& cache, const ColorGlyphInfo& info, const FontFace& face) {
    const RecursiveLock lock(cache.getMutex());
    ColorFace& colorFace = openColorFace(face);
    if (auto paints = ColorGlyphSource(colorFace, info).getPaints()) {
        return {std::move(paints), nullptr, 0.0F};
    }
    const float size = findColorStrikeSize(colorFace, info.getGlyphIndex(), info.getPixelsPerEm());
    return {nullptr, size > 0.0F ? findImage(cache, resize(info, size), face) : nullptr, size};
}

} // namespace

ColorGlyphs::ColorGlyphs()
    : _cache(std::make_unique<Internal::ColorGlyphCache>()) {}

ColorGlyphs::~ColorGlyphs() = default;

bool ColorGlyphs::hasColors(const FontFace& face) const {
    if (!mayHaveColors(face)) {
        return false;
    }
    const RecursiveLock lock(_cache->getMutex());
    return openColorFace(face).hasColors();
}

ColorImagePtr ColorGlyphs::getImage(const ColorGlyphInfo& info, const NNPtr<const FontFace>& face) const {
    if (!mayHaveColors(*face)) {
        return nullptr;
    }
    return findImage(*_cache, info, *face);
}

float ColorGlyphs::getUnitsPerEm(const FontFace& face) {
    return Internal::readUnitsPerEm(face.getHandle().get());
}

bool ColorGlyphs::paint(const ColorGlyphInfo& info, const NNPtr<const FontFace>& face,
                        ColorPaintTarget& target) const {
    if (!mayHaveColors(*face)) {
        return false;
    }
    const Drawing drawing = findDrawing(*_cache, info, *face);
    if (drawing.paints != nullptr) {
        drawing.paints->paint(target);
    } else if (drawing.bitmap != nullptr) {
        target.drawImage(*drawing.bitmap, getBox(*drawing.bitmap, drawing.pixelsPerEm, getUnitsPerEm(*face)));
    }
    return drawing.paints != nullptr || drawing.bitmap != nullptr;
}

CacheFigures ColorGlyphs::getFigures() const {
    return _cache->getFigures();
}

void ColorGlyphs::flush() {
    const RecursiveLock lock(_cache->getMutex());
    _cache->clear();
}

void ColorGlyphs::reset(std::uint64_t maxBytes) {
    Internal::ColorGlyphCache::Cache entries(0, maxBytes); // after the exchange, the old ones
    const RecursiveLock lock(_cache->getMutex());
    _cache->exchange(entries);
}

} // namespace Vell::FontEngine
