#include <TextLayout/Private/RangeFallback.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <string>
#include <utility>

namespace Vell::TextLayout {

RangeFallback::RangeFallback(NNPtr<const FontEngine::FontFactory> factory)
    : _factory(std::move(factory)) {}

std::optional<FontLoaders::CoveringFace>
RangeFallback::findFace(const FontLoaders::CoverageRequest& request) const {
    const char32_t first = request.cluster.front();
    const unsigned int range = FontLoaders::UnicodeRangeMap::find(first);
    const std::string family =
        range != 0 ? _factory->getFontLoader().getFamilyNameForRange(range) : std::string();
    if (family.empty()) {
        return std::nullopt;
    }
    const NNPtr<const Gfx::FontFaceInfo> face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>(
        family, request.face->isBold(), request.face->isItalic());
    if (_factory->shareFace(face)->getBasicMetrics().getCharMap()[first].glyphIndex == 0) {
        return std::nullopt;
    }
    return FontLoaders::CoveringFace{face, face};
}

} // namespace Vell::TextLayout
