#include <FontEngine/Private/FE_RunServices.h>

#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell::FontEngine::Internal {

std::optional<DescribedFace>
RunServices::findFallback(unsigned int codePoint,
                          const CheckedPtrImpl<const Gfx::FontInfo, false>& fontInfo) {
    const FontFactory& factory = derefNN(_factory.get());
    auto request = factory.requestFallback(codePoint, fontInfo);
    if (!request) {
        return std::nullopt;
    }
    const FontFaceInfo wanted(std::move(request->family), request->bold, request->italic);
    if (!_lastFallback || !_lastFallback->holdsSameAs(wanted)) {
        _lastFallback =
            std::make_shared<const FontFaceInfo>(wanted.getName(), request->bold, request->italic);
    }
    const CheckedPtrImpl<const FontFaceInfo, false> faceInfo(_lastFallback);
    return DescribedFace{faceInfo, factory.copyFace(faceInfo)};
}

} // namespace Vell::FontEngine::Internal
