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

private:
    FontLoaders::FTLibraryPtr _library;
    FontLoaders::FTFacePtr _face;
    bool _hasLayers;
    std::vector<ColorStrike> _strikes;
};

} // namespace Vell::FontEngine::Internal
