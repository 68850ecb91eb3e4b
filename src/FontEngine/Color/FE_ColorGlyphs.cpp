#include <FontEngine/Color/FE_ColorGlyphs.h>

#include <FontEngine/Color/Private/FE_ColorBitmap.h>
#include <FontEngine/Color/Private/FE_ColorFace.h>
#include <FontEngine/Private/FE_LockedCache.h>

#include FT_TRUETYPE_TABLES_H

#include <utility>

namespace Vell::FontEngine {

namespace Internal {

using ColorImagePtr = std::shared_ptr<const ColorGlyphImage>;

struct ColorGlyphCache : LockedCache<ColorGlyphInfo, ColorImagePtr, ColorGlyphInfoHash> {};

} // namespace Internal

using Internal::ColorFace;
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
const ColorFace& openColorFace(const FontFace& face) {
    std::shared_ptr<const ColorFace>& opened = face.getColorFace();
    if (opened == nullptr) {
        opened = std::make_shared<const ColorFace>(face.getFaceData());
    }
    return *opened;
}

ColorGlyphInfo resize(const ColorGlyphInfo& info, float pixelsPerEm) {
    return ColorGlyphInfo(info.getFaceInfo(), info.getGlyphIndex(), pixelsPerEm, 1.0F, 1.0F, nullptr, {});
}

/// The key of a bitmap, which has its own colours.
ColorGlyphInfo dropColors(const ColorGlyphInfo& info) {
    return ColorGlyphInfo(info.getFaceInfo(), info.getGlyphIndex(), info.getFontSize(), info.getScale(),
                          info.getDevicePixelRatio(), nullptr, {});
}

/// The rectangle of an unscaled bitmap in font units.
PaintBox getBox(const ColorGlyphImage& image, float pixelsPerEm, float unitsPerEm) {
    const float scale = unitsPerEm / pixelsPerEm;
    const auto left = static_cast<float>(image.left);
    const auto top = static_cast<float>(image.top);
    return {left * scale, (top - static_cast<float>(image.rows)) * scale,
            (left + static_cast<float>(image.width)) * scale, top * scale};
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
    const RecursiveLock lock(_cache->getMutex());
    const ColorFace& colorFace = openColorFace(*face);
    const auto makeNode = [&] {
        ColorImagePtr image =
            Internal::makeColorBitmap(colorFace, info.getGlyphIndex(), info.getPixelsPerEm());
        const std::uint64_t bytes = weigh(image.get());
        return Internal::ColorGlyphCache::Node(std::move(image), bytes);
    };
    return _cache->getOrPut(dropColors(info), makeNode).getValue();
}

float ColorGlyphs::getUnitsPerEm(const FontFace& face) {
    constexpr unsigned short usual = 1000;
    const FT_Face handle = face.getHandle().get();
    const auto* const head = static_cast<const TT_Header*>(FT_Get_Sfnt_Table(handle, FT_SFNT_HEAD));
    const unsigned short ofTable = head != nullptr && head->Units_Per_EM != 0 ? head->Units_Per_EM : usual;
    return static_cast<float>(handle->units_per_EM != 0 ? handle->units_per_EM : ofTable);
}

bool ColorGlyphs::paint(const ColorGlyphInfo& info, const NNPtr<const FontFace>& face,
                        ColorPaintTarget& target) const {
    ColorImagePtr image;
    float pixelsPerEm = 0.0F;
    if (mayHaveColors(*face)) {
        const RecursiveLock lock(_cache->getMutex());
        const ColorFace& colorFace = openColorFace(*face);
        pixelsPerEm = findColorStrikeSize(colorFace, info.getGlyphIndex(), info.getPixelsPerEm());
        image = pixelsPerEm > 0.0F ? getImage(resize(info, pixelsPerEm), face) : nullptr;
    }
    if (image == nullptr) {
        return false;
    }
    target.drawImage(*image, getBox(*image, pixelsPerEm, getUnitsPerEm(*face)));
    return true;
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
