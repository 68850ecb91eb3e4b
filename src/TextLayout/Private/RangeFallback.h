#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <FontLoaders/Public/CoverageFallback.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <optional>

namespace Vell::TextLayout {

/// The fallback of factories whose loader knows no more than a family for each range of Unicode.
class RangeFallback final : public FontLoaders::CoverageFallback {
public:
    explicit RangeFallback(NNPtr<const FontEngine::FontFactory> factory);

    /// The loader's family in the style of the text, if it has the first character.
    std::optional<FontLoaders::CoveringFace>
    findFace(const FontLoaders::CoverageRequest& request) const override;

private:
    NNPtr<const FontEngine::FontFactory> _factory;
};

} // namespace Vell::TextLayout
