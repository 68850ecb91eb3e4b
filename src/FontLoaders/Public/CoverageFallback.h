#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Vell::FontLoaders {

/// A grapheme cluster of a text that needs a face.
struct CoverageRequest {
    std::u32string_view cluster;            ///< its code points, joiners and selectors included
    NNPtr<const Gfx::FontFaceInfo> face;    ///< the text's own family and style
    std::string language = {};              ///< a BCP 47 tag ("ja", "zh-Hant"), or empty if it is not known
    std::vector<std::string> families = {}; ///< to try after the text's own, most preferred first
};

/// A face that draws a cluster.
struct CoveringFace {
    /// The face itself. The loader's loadFont serves it.
    NNPtr<const Gfx::FontFaceInfo> face;
    /// What to ask a font factory for. The style is the text's if the factory makes it from `face`, by adding
    /// bold or italic if the family lacks them. Otherwise the same as `face`.
    NNPtr<const Gfx::FontFaceInfo> drawnFace;
};

/// Finds the face for a grapheme cluster by what the faces have, in the language and style of the text. A
/// loader's getFamilyNameForRange knows only blocks of Unicode. Text layers call this; clients implement it
/// beside their FontLoader, or take createPlatformCoverageFallback.
///
///     if (const auto found = fallback.findFace({U"\u0416", face, "sr"})) {
///         const auto font = factory->getFont(makeNNPtr<const FontInfo>(found->drawnFace, size, type));
///     }
///
/// A cluster is never divided: one face draws all of it. The views in a request need to live only as long as
/// the call.
///
/// Threads: text layers call from any thread, and from several at once. Errors: exceptions pass through to
/// whoever draws the text. Cost: once for each cluster that the text's own face lacks, so remember answers.
class VELL_API CoverageFallback {
public:
    virtual ~CoverageFallback();

    /// The face, or nothing if no face has the cluster.
    virtual std::optional<CoveringFace> findFace(const CoverageRequest& request) const = 0;
};

} // namespace Vell::FontLoaders
