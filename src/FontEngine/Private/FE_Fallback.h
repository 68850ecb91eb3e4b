#pragma once

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/CallableRef.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <optional>
#include <string>

/// What serves instead of a style that a family lacks, or of a character that a font lacks.
namespace Vell::FontEngine::Internal {

/// Returns the font file of the requested family in one style, or null if there is none.
using StyleProbe = CallableRef<FontLoaders::FontBytes(bool bold, bool italic)>;

/// Whether a file of exactly the requested style may serve this family.
bool mayUseExactStyle(const FontFaceInfo& request);

/// Chooses another style of the family and the synthetic styles to add to it. Returns null if the family has
/// no style at all.
std::shared_ptr<const FaceData> findSimilarStyle(const FontFaceInfo& request, const StyleProbe& probe);

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
