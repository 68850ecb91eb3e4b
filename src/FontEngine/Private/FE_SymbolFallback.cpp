#include <FontEngine/Private/FE_SymbolFallback.h>

#include <FontLoaders/Public/UnicodeRangeMap.h>

#include <utility>

namespace Vell::FontEngine::Internal {

std::string findFallbackFamily(const FontFactory& factory, unsigned int codePoint) {
    const unsigned int range = FontLoaders::UnicodeRangeMap::find(codePoint);
    return range != 0 ? factory.getFontLoader().getFamilyNameForRange(range) : std::string();
}

std::optional<DescribedFace> RunFallback::find(const FontFactory& factory, unsigned int codePoint,
                                               const NNPtr<const Gfx::FontInfo>& fontInfo) {
    std::string family = findFallbackFamily(factory, codePoint);
    if (family.empty()) {
        return std::nullopt;
    }
    const auto style = fontInfo->getFontFaceInfo();
    const bool isBold = style->isBold();
    const bool isItalic = style->isItalic();
    // Makes the same calls as getDefaultFontForSymbol, because a client's description may throw or count its
    // calls.
    static_cast<void>(fontInfo->getSize());
    static_cast<void>(fontInfo->getTextPositionType());
    const FontFaceInfo wanted(std::move(family), isBold, isItalic);
    if (!_last || !_last->holdsSameAs(wanted)) {
        _last = std::make_shared<const FontFaceInfo>(wanted.getName(), isBold, isItalic);
    }
    const NNPtr<const FontFaceInfo> faceInfo(_last);
    return DescribedFace{faceInfo, factory.shareFace(faceInfo)};
}

} // namespace Vell::FontEngine::Internal
