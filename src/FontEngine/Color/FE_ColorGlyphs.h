#pragma once

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <FontEngine/Color/FE_ColorGlyphPainter.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/FE_FontFace.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstdint>
#include <memory>

namespace Vell::FontEngine {

namespace Internal {
struct ColorGlyphCache;
}

/// The colour glyphs of a factory: layers and paint graphs of COLR with the palettes of CPAL, and the bitmaps
/// of CBDT and sbix. In a font with both kinds, graphs come first, if FreeType finds the outlines that they
/// consist of: FreeType 2.12 finds none in a font with colour bitmaps. SVG tables are ignored.
///
///     const ColorGlyphs& colors = factory->getColorGlyphs();
///     const ColorGlyphInfo info(faceInfo, glyphIndex, 16.0F, 1.0F, 2.0F, nullptr, textColor);
///     const std::shared_ptr<const ColorGlyphImage> image = colors.getImage(info, face);
///
/// A cache holds the images in the order of most recent use. It has no limit until `reset` sets one, and
/// counts the bytes of the pixels and of the record of each entry, absent images included. The factory's own
/// services know nothing of it: they return the same glyphs whether or not somebody asks for colours. The
/// first request for a face with colour tables opens a second FreeType face over the same bytes, which lives
/// as long as the FontFace.
///
/// Keys: a glyph that does not use the text's colour has one entry for all foregrounds, and a bitmap has one
/// for all palettes, too.
///
/// Bitmaps: a strike of the requested pixels per em is taken as it is. Otherwise the next larger strike that
/// has the glyph, or else the largest, is scaled.
///
/// Threads: any thread may call any function. A look-up holds the lock of the cache while it makes the image,
/// so each image is made once. The lock is recursive, and no other lock of the factory is taken while it is
/// held. Any number of threads may use the images.
///
/// Reentrancy: the destructors of the client's descriptions may call any function here. Such a call must not
/// evict the entry that is being made: a failed assertion. A ColorPaintTarget is called without the lock and
/// may call everything.
///
/// Errors: a glyph that the font does not have in colour, or that is broken or too large
/// (maxColorGlyphPixels) is absent: null. FreeTypeException if the face cannot be opened or FreeType has no
/// memory; std::bad_alloc. A request that throws caches nothing and releases its lock.
class VELL_API ColorGlyphs {
public:
    ~ColorGlyphs();
    ColorGlyphs(const ColorGlyphs&) = delete;
    ColorGlyphs& operator=(const ColorGlyphs&) = delete;

    /// Whether the face has colour tables that can be drawn. Opens nothing for a face without any.
    bool hasColors(const FontFace& face) const;

    /// Returns the image of a glyph, which has no pixels (no buffer) if its graph covers nothing. Returns
    /// null if the glyph is absent, as it is if it has NaN, infinitely many or less than 0 pixels per em, or
    /// 0. The cache remembers either. `face` must be the face of this factory that `info` describes.
    std::shared_ptr<const ColorGlyphImage> getImage(const ColorGlyphInfo& info,
                                                    const NNPtr<const FontFace>& face) const;

    /// Returns how many units of `paint` make an em: the face's units per em or, for a face that has only
    /// bitmaps and therefore no em for FreeType, those of its head table, and 1000 if it has none.
    static float getUnitsPerEm(const FontFace& face);

    /// Draws a glyph as vectors, whatever its size, or a bitmap of the font as an image: the strike that
    /// getImage would take, unscaled. Returns false, and draws nothing, if the glyph is absent. What `target`
    /// throws passes through.
    bool paint(const ColorGlyphInfo& info, const NNPtr<const FontFace>& face, ColorPaintTarget& target) const;

    CacheFigures getFigures() const;

    /// Empties the cache and keeps its limit.
    void flush();
    /// Empties the cache and limits it; 0 means no limit.
    void reset(std::uint64_t maxBytes);

private:
    friend class FontFactory;
    ColorGlyphs();

    std::unique_ptr<Internal::ColorGlyphCache> _cache;
};

} // namespace Vell::FontEngine
