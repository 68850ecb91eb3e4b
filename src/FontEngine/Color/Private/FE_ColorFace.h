#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontLoaders/Public/FreeType.h>

#include <vector>

namespace Vell::FontEngine::Internal {

/// A size at which a font has bitmaps.
struct ColorStrike {
    int index;   ///< of FT_Face::available_sizes
    float ppemX; ///< positive
    float ppemY; ///< positive
};

/// How a face draws a glyph in colour.
enum class ColorKind : unsigned char {
    Unknown,         ///< nobody has asked yet
    Bitmap,          ///< with a bitmap, or not at all
    Layers,          ///< with COLR, in colours of the palette
    ForegroundLayers ///< with COLR, and with the colour of the text
};

/// The units per em of a face, or those of its head table if FreeType has none because the face has only
/// bitmaps. 1000 if that has none either.
float readUnitsPerEm(FT_Face face);

/// A FreeType face for colour glyphs, in a library of its own: sizing it and loading its glyphs does not
/// touch the face that the other glyph services use. Only one thread at a time may use it.
class ColorFace {
public:
    /// Throws FreeTypeException.
    explicit ColorFace(const FaceData& data);

    FT_Face get() const { return _face.get(); }
    /// COLR and CPAL.
    bool hasLayers() const { return _hasLayers; }
    /// Of CBDT or sbix, in ascending order.
    const std::vector<ColorStrike>& getStrikes() const { return _strikes; }
    bool hasColors() const { return _hasLayers || !_strikes.empty(); }

    /// The glyph must exist.
    ColorKind getKind(unsigned long glyphIndex) const {
        return _kinds.empty() ? ColorKind::Bitmap : _kinds[glyphIndex];
    }
    /// Only for faces with layers.
    void setKind(unsigned long glyphIndex, ColorKind kind) { _kinds[glyphIndex] = kind; }

private:
    FontLoaders::FTLibraryPtr _library;
    FontLoaders::FTFacePtr _face;
    bool _hasLayers;
    std::vector<ColorStrike> _strikes;
    std::vector<ColorKind> _kinds; // of each glyph; empty without layers
};

} // namespace Vell::FontEngine::Internal
