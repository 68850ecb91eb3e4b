#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

namespace Vell::FontEngine::Internal {

/// What is known about the size of a FreeType face, so that a size it has is not asked for again: FreeType
/// would rerun the font's own preparation program, which takes ten times as long as a hinted glyph.
///
/// Nothing is known of a face that is not scalable or varies, after a failure, and once somebody else has
/// given the face another size. Belongs to whoever may use the face.
class SizedFace {
public:
    /// Whether the face has exactly this size, and glyphs have been loaded at it without a failure.
    bool has(FT_Face face, FT_F26Dot6 height, FT_UInt resolution) const {
        return _isTrusted && _height == height && _resolution == resolution && face->size == _size &&
               isSame(face->size->metrics);
    }

    /// FreeType has just given the face this size.
    void note(FT_Face face, FT_F26Dot6 height, FT_UInt resolution) {
        _height = height;
        _resolution = resolution;
        _size = face->size;
        _metrics = face->size->metrics;
    }

    /// Between two calls of FreeType, the second of which may fail.
    void doubt() { _isTrusted = false; }
    /// All calls have succeeded.
    void trust(FT_Face face) { _isTrusted = FT_IS_SCALABLE(face) && !FT_HAS_MULTIPLE_MASTERS(face); }

private:
    bool isSame(const FT_Size_Metrics& metrics) const {
        return metrics.x_ppem == _metrics.x_ppem && metrics.y_ppem == _metrics.y_ppem &&
               metrics.x_scale == _metrics.x_scale && metrics.y_scale == _metrics.y_scale;
    }

    bool _isTrusted = false;
    FT_F26Dot6 _height = 0;
    FT_UInt _resolution = 0;
    FT_Size _size = nullptr;
    FT_Size_Metrics _metrics{};
};

} // namespace Vell::FontEngine::Internal
