#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_FontFactory.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <string>

namespace Vell::FontEngine::Internal {

/// The family that serves a character which its own font lacks; empty if there is none.
std::string findFallbackFamily(const FontFactory& factory, unsigned int codePoint);

/// A face with the description that it is known by.
struct DescribedFace {
    NNPtr<const Gfx::FontFaceInfo> faceInfo;
    NNPtr<const FontFace> face;
};

/// The faces of FontFactory::getDefaultFontForSymbol for one run: the same questions to loader and
/// description, the same look into the cache of faces, but no new font and no new description while the
/// answers repeat.
class RunFallback {
public:
    std::optional<DescribedFace> find(const FontFactory& factory, unsigned int codePoint,
                                      const NNPtr<const Gfx::FontInfo>& fontInfo);

private:
    std::shared_ptr<const FontFaceInfo> _last;
};

} // namespace Vell::FontEngine::Internal
