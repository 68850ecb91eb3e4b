#include <FontEngine/Private/FE_SymbolFallback.h>

#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <utility>

namespace Vell::FontEngine::Internal {

std::optional<FallbackRequest> requestFallback(const FontFactory& factory, unsigned int codePoint,
                                               const NNPtr<const Gfx::FontInfo>& fontInfo) {
    const unsigned int range = FontLoaders::UnicodeRangeMap::find(codePoint);
    if (range == 0) {
        return std::nullopt;
    }
    std::string family = factory.getFontLoader().getFamilyNameForRange(range);
    if (family.empty()) {
        return std::nullopt;
    }
    const auto style = fontInfo->getFontFaceInfo();
    return FallbackRequest{std::move(family), style->isBold(), style->isItalic(), fontInfo->getSize(),
                           fontInfo->getTextPositionType()};
}

std::optional<DescribedFace> RunFallback::find(const FontFactory& factory, unsigned int codePoint,
                                               const NNPtr<const Gfx::FontInfo>& fontInfo) {
    auto request = requestFallback(factory, codePoint, fontInfo);
    if (!request) {
        return std::nullopt;
    }
    const FontFaceInfo wanted(std::move(request->family), request->bold, request->italic);
    if (!_last || !_last->holdsSameAs(wanted)) {
        _last = std::make_shared<const FontFaceInfo>(wanted.getName(), request->bold, request->italic);
    }
    const NNPtr<const FontFaceInfo> faceInfo(_last);
    return DescribedFace{faceInfo, factory.shareFace(faceInfo)};
}

} // namespace Vell::FontEngine::Internal
