#include <FontEngine/Private/FE_CharSize.h>

#include <Utils/Public/Truncate.h>

namespace Vell::FontEngine::Internal {

namespace {

/// `height` in points, `resolution` in dots per inch; FreeType takes both for the width as well.
bool trySetCharSize(const FontLoaders::FTFacePtr& face, float height, double resolution) {
    const auto height26Dot6 = tryTruncate<FT_F26Dot6>(static_cast<double>(height) * 64.0);
    const auto wholeResolution = tryTruncate<FT_UInt>(resolution);
    return height26Dot6 && wholeResolution &&
           FontLoaders::isFTSucceeded(FT_Set_Char_Size(face.get(), 0, *height26Dot6, *wholeResolution, 0));
}

} // namespace

bool trySizeForBitmap(const FontLoaders::FTFacePtr& face, const BitmapGlyphInfo& info) {
    constexpr double pointsPerInch = 72.0; // at this resolution a point is a pixel
    return trySetCharSize(face, info.getFontSize() * info.getScale().x,
                          static_cast<double>(info.getDevicePixelRatio()) * pointsPerInch);
}

bool trySizeForOutline(const FontLoaders::FTFacePtr& face, const GlyphInfo& info) {
    constexpr double defaultResolution = 0.0;
    return trySetCharSize(face, info.getFontSize(), defaultResolution);
}

} // namespace Vell::FontEngine::Internal
