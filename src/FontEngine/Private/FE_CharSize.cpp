#include <FontEngine/Private/FE_CharSize.h>

#include <Utils/Public/Truncate.h>

namespace Vell::FontEngine::Internal {

namespace {

/// `height` in points, `resolution` in dots per inch; FreeType takes both for the width as well.
bool trySetCharSize(const FontLoaders::FTFacePtr& face, float height, double resolution, SizedFace& sized) {
    const auto height26Dot6 = tryTruncate<FT_F26Dot6>(static_cast<double>(height) * 64.0);
    const auto wholeResolution = tryTruncate<FT_UInt>(resolution);
    if (!height26Dot6 || !wholeResolution) {
        return false;
    }
    if (sized.has(face.get(), *height26Dot6, *wholeResolution)) {
        return true;
    }
    sized.doubt();
    if (!FontLoaders::isFTSucceeded(FT_Set_Char_Size(face.get(), 0, *height26Dot6, *wholeResolution, 0))) {
        return false;
    }
    sized.note(face.get(), *height26Dot6, *wholeResolution);
    return true;
}

} // namespace

bool trySizeForBitmap(const FontLoaders::FTFacePtr& face, const BitmapGlyphInfo& info, SizedFace& sized) {
    constexpr double pointsPerInch = 72.0; // at this resolution a point is a pixel
    return trySetCharSize(face, info.getFontSize() * info.getScale().x,
                          static_cast<double>(info.getDevicePixelRatio()) * pointsPerInch, sized);
}

bool trySizeForOutline(const FontLoaders::FTFacePtr& face, const GlyphInfo& info, SizedFace& sized) {
    constexpr double defaultResolution = 0.0;
    return trySetCharSize(face, info.getFontSize(), defaultResolution, sized);
}

} // namespace Vell::FontEngine::Internal
