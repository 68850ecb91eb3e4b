#include <FontEngine/Private/FE_Fallback.h>

#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell::FontEngine::Internal {

using FontLoaders::FontBytes;

namespace {

/// Its styled files have other proportions than its regular file, so all its styles are made from one file.
constexpr const char* alwaysSynthesisedFamily = "Yu Gothic Medium";

std::shared_ptr<const FaceData> makeFaceData(const FontBytes& bytes, bool embolden, bool slant) {
    return makeNNPtr<const FaceData>(FaceData{bytes, makeGlyphTransform(embolden, slant)});
}

std::shared_ptr<const FaceData> findRegular(const FontFaceInfo& request, const StyleProbe& probe) {
    const FontBytes regular = probe(false, false);
    return regular ? makeFaceData(regular, request.isBold(), request.isItalic()) : nullptr;
}

std::shared_ptr<const FaceData> findWithRegular(const FontFaceInfo& request, const StyleProbe& probe) {
    if (request.isBold() && request.isItalic()) {
        if (const FontBytes bold = probe(true, false)) {
            return makeFaceData(bold, false, request.isItalic());
        }
    }
    return findRegular(request, probe);
}

std::shared_ptr<const FaceData> findWithoutRegular(const FontFaceInfo& request, const StyleProbe& probe) {
    const FontBytes bold = probe(true, false);
    const FontBytes italic = probe(false, true);
    if (!bold && !italic) {
        return findRegular(request, probe);
    }
    // Adds a missing style only to the file of the other style. If both files exist, a bold italic request
    // gets the bold file unchanged, because a slanted bold beside a true italic looks worse than an upright
    // bold.
    const bool slant = request.isItalic() && !italic && bold;
    const bool isBoldMissing = request.isBold() && !bold && italic;
    const bool embolden = mayUseExactStyle(request) ? isBoldMissing : request.isBold();
    return makeFaceData(bold ? bold : italic, embolden, slant);
}

} // namespace

bool mayUseExactStyle(const FontFaceInfo& request) {
    return request.getName() != alwaysSynthesisedFamily;
}

std::shared_ptr<const FaceData> findSimilarStyle(const FontFaceInfo& request, const StyleProbe& probe) {
    const FontBytes regular = probe(false, false);
    return regular ? findWithRegular(request, probe) : findWithoutRegular(request, probe);
}

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
