#pragma once

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/FE_FontFace.h>

namespace Vell::FontEngine {

/// The colour glyphs of a factory (FontFactory::getColorGlyphs): bitmaps of CBDT and sbix, layers of COLR
/// version 0 and paint graphs of COLR version 1, with the palettes of CPAL.
class VELL_API ColorGlyphs {
public:
    /// Whether the face has colour tables. Remembered; cheap for faces without them.
    bool hasColors(const FontFace& face) const;

    /// Returns the image of a glyph, or null if the glyph has no colours, its data is broken or it exceeds
    /// the limits; the cache remembers either.
    std::shared_ptr<const ColorGlyphImage> getImage(const ColorGlyphInfo& info,
                                                    const NNPtr<const FontFace>& face) const;

    /// Draws a glyph as vectors; a bitmap of the font as an image. Returns false, and draws nothing, if
    /// getImage would return null.
    bool paint(const ColorGlyphInfo& info, const NNPtr<const FontFace>& face, ColorPaintTarget& target) const;

    CacheFigures getFigures() const;
    /// Empties the cache and keeps its limit.
    void flush();
    /// Empties the cache and limits it; 0 means no limit.
    void reset(std::uint64_t maxBytes);
};

} // namespace Vell::FontEngine
