#include <FontEngine/Private/FE_FaceSizing.h>

#include <Utils/Public/NumCast.h>

namespace Vell::FontEngine::Internal {

namespace {

bool areSame(const FT_Size_Metrics& lhs, const FT_Size_Metrics& rhs) {
    return lhs.x_ppem == rhs.x_ppem && lhs.y_ppem == rhs.y_ppem && lhs.x_scale == rhs.x_scale &&
           lhs.y_scale == rhs.y_scale;
}

} // namespace

FaceSizing::FaceSizing(const FontFace& face, const BitmapGlyphInfo& info)
    : _operation(FontLoaders::renderingBounds)
    , _face(face.getHandle().get())
    , _known(face.getKnownSize()) {
    constexpr double pointsPerInch = 72.0; // at this resolution, one point is one pixel
    _isSized = trySize(info.getFontSize() * info.getScale().x,
                       static_cast<double>(info.getDevicePixelRatio()) * pointsPerInch);
}

FaceSizing::FaceSizing(const FontFace& face, const GlyphInfo& info)
    : _operation(FontLoaders::renderingBounds)
    , _face(face.getHandle().get())
    , _known(face.getKnownSize()) {
    constexpr double defaultResolution = 0.0;
    _isSized = trySize(info.getFontSize(), defaultResolution);
}

void FaceSizing::confirm() {
    _known.isTrusted = FT_IS_SCALABLE(_face) && !FT_HAS_MULTIPLE_MASTERS(_face);
}

/// `height` is in points and `resolution` in dots per inch. FreeType uses both for the width, too.
bool FaceSizing::trySize(float height, double resolution) {
    const auto height26Dot6 = tryTruncate<FT_F26Dot6>(static_cast<double>(height) * 64.0);
    const auto wholeResolution = tryTruncate<FT_UInt>(resolution);
    if (!height26Dot6 || !wholeResolution) {
        return false;
    }
    const bool isKnownAlready = isKnown(*height26Dot6, *wholeResolution);
    _known.isTrusted = false; // until confirm is called
    if (isKnownAlready) {
        return true;
    }
    if (!FontLoaders::isFTSucceeded(FT_Set_Char_Size(_face, 0, *height26Dot6, *wholeResolution, 0))) {
        return false;
    }
    _known = {false, *height26Dot6, *wholeResolution, _face->size, _face->size->metrics};
    return true;
}

bool FaceSizing::isKnown(FT_F26Dot6 height, FT_UInt resolution) const {
    return _known.isTrusted && _known.height == height && _known.resolution == resolution &&
           _face->size == _known.size && areSame(_face->size->metrics, _known.metrics);
}

} // namespace Vell::FontEngine::Internal
