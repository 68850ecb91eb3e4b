#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_FontFactory.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <string>

namespace Vell::FontEngine::Internal {

/// Returns the family to use for a character that the text's own font lacks. Empty if there is none.
std::string findFallbackFamily(const FontFactory& factory, unsigned int codePoint);

/// A face and the description that it was requested by.
struct DescribedFace {
    NNPtr<const Gfx::FontFaceInfo> faceInfo;
    NNPtr<const FontFace> face;
};

/// Finds the faces of FontFactory::getDefaultFontForSymbol for one run. It makes the same calls to the loader
/// and the description and the same lookup in the face cache, but no font. It makes a new description only if
/// the family or the style changes.
class RunFallback {
public:
    std::optional<DescribedFace> find(const FontFactory& factory, unsigned int codePoint,
                                      const NNPtr<const Gfx::FontInfo>& fontInfo);

private:
    std::shared_ptr<const FontFaceInfo> _last;
};

} // namespace Vell::FontEngine::Internal
