#include <FontEngine/Private/FE_StyleFallback.h>

#include <Utils/Public/Ptr/PtrUtils.h>

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

} // namespace Vell::FontEngine::Internal
