#include <FontLoaders/Public/PlatformCoverageFallback.h>

#include <FontLoaders/Private/Coverage/CoverageAnswers.h>
#include <FontLoaders/Private/Coverage/LanguageTag.h>
#include <FontLoaders/Private/Installed/PlatformFonts.h>
#include <FontLoaders/Private/PlainFaceInfo.h>

#include <Utils/Public/Ptr/PtrUtils.h>

#include <string>
#include <utility>

namespace Vell::FontLoaders {

namespace {

using Internal::CoverageQuery;
using Internal::CoveringFamily;
using Internal::FaceStyle;
using Internal::InstalledFonts;

NNPtr<const Gfx::FontFaceInfo> describeFace(const std::string& family, const FaceStyle& style) {
    return makeNNPtr<const Internal::PlainFaceInfo>(family, style.bold, style.italic);
}

CoveringFace describe(const CoveringFamily& found) {
    const auto face = describeFace(found.name, found.face.style);
    const bool isSame = found.face.style == found.face.drawnStyle;
    return {face, isSame ? face : describeFace(found.name, found.face.drawnStyle)};
}

class PlatformCoverageFallback final : public CoverageFallback {
public:
    explicit PlatformCoverageFallback(std::shared_ptr<Internal::PlatformFonts> fonts)
        : _fonts(std::move(fonts)) {}

    std::optional<CoveringFace> findFace(const CoverageRequest& request) const override {
        const auto search = [&] { return searchFace(request); };
        return _answers.get(request, _fonts->getRemovalCount(), search);
    }

private:
    std::optional<CoveringFace> searchFace(const CoverageRequest& request) const {
        const CoverageQuery query{Internal::findClusterNeeds(request.cluster), request.face->getName(),
                                  Internal::findFontconfigLanguage(request.language),
                                  FaceStyle{request.face->isBold(), request.face->isItalic()},
                                  request.families};
        const auto found = _fonts->ask([&](InstalledFonts& fonts) { return fonts.findCovering(query); });
        return found ? std::make_optional(describe(*found)) : std::nullopt;
    }

    const std::shared_ptr<Internal::PlatformFonts> _fonts;
    mutable Internal::CoverageAnswers _answers;
};

} // namespace

std::shared_ptr<const CoverageFallback> createPlatformCoverageFallback(const FontLoader& loader) {
    auto fonts = Internal::findPlatformFonts(loader);
    return fonts ? std::make_shared<const PlatformCoverageFallback>(std::move(fonts)) : nullptr;
}

} // namespace Vell::FontLoaders
