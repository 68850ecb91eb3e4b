#pragma once

#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/FE_GlyphInfo.h>

#include <memory>
#include <vector>

namespace Vell::FontEngine {

/// A palette of a font with some of its colours replaced.
struct ColorPalette {
    struct Override {
        unsigned short entry;
        PaintColor color;
    };
    unsigned short index = 0; ///< of the font's palettes; one that the font lacks stands for the first
    std::vector<Override> overrides;
};

/// Identifies the image of a colour glyph: the key of the cache of colour glyphs. `foreground` is the text's
/// colour, for the layers that ask for it; keys of glyphs that do not use it are equal whatever it is.
class ColorGlyphInfo : public GlyphInfo {
public:
    ColorGlyphInfo(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, unsigned long glyphIndex, float fontSize,
                   float scale, float devicePixelRatio, std::shared_ptr<const ColorPalette> palette,
                   const PaintColor& foreground);
};

} // namespace Vell::FontEngine
