#include <FontEngine/Color/FE_ColorGlyphInfo.h>

#include <Utils/Public/Hash.h>

#include <utility>

namespace Vell::FontEngine {

namespace {

bool isPlain(const ColorPalette* palette) {
    return palette == nullptr || (palette->index == 0 && palette->overrides.empty());
}

bool areEqual(const ColorPalette* lhs, const ColorPalette* rhs) {
    if (lhs == rhs || (isPlain(lhs) && isPlain(rhs))) {
        return true;
    }
    return lhs != nullptr && rhs != nullptr && *lhs == *rhs;
}

std::uint64_t pack(const PaintColor& color) {
    return static_cast<std::uint64_t>(color.a) << 24U | static_cast<std::uint64_t>(color.r) << 16U |
           static_cast<std::uint64_t>(color.g) << 8U | color.b;
}

std::uint64_t addToHash(std::uint64_t hash, const ColorPalette* palette) {
    if (isPlain(palette)) {
        return hash;
    }
    hash = combineHash(hash, palette->index);
    for (const ColorPalette::Override& override : palette->overrides) {
        hash = combineHash(hash, static_cast<std::uint64_t>(override.entry) << 32U | pack(override.color));
    }
    return hash;
}

} // namespace

ColorGlyphInfo::ColorGlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, unsigned long glyphIndex,
                               float fontSize, float scale, float devicePixelRatio,
                               std::shared_ptr<const ColorPalette> palette, const PaintColor& foreground)
    : GlyphInfo(faceInfo, glyphIndex, fontSize, GlyphTransform::None)
    , _scale(scale)
    , _devicePixelRatio(devicePixelRatio)
    , _palette(std::move(palette))
    , _foreground(foreground) {}

bool ColorGlyphInfo::operator==(const ColorGlyphInfo& other) const {
    return GlyphInfo::operator==(other) && _scale == other._scale &&
           _devicePixelRatio == other._devicePixelRatio && _foreground == other._foreground &&
           areEqual(_palette.get(), other._palette.get());
}

float ColorGlyphInfo::getPixelsPerEm() const {
    return static_cast<float>(static_cast<double>(getFontSize()) * _scale * _devicePixelRatio);
}

std::uint64_t ColorGlyphInfo::hash() const {
    std::uint64_t hash = combineHash(0, GlyphInfo::hash());
    hash = combineHash(hash, hashFloat(_scale));
    hash = combineHash(hash, hashFloat(_devicePixelRatio));
    hash = combineHash(hash, pack(_foreground));
    return addToHash(hash, _palette.get());
}

} // namespace Vell::FontEngine
