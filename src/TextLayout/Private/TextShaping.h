#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <FontLoaders/Public/CoverageFallback.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Private/ShapingService.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

class StyleGroups;

/// Shapes texts with the fonts of one factory.
class TextShaping final : public ShapingService {
public:
    /// Without a fallback if that is null.
    TextShaping(NNPtr<const FontEngine::FontFactory> factory,
                std::shared_ptr<const FontLoaders::CoverageFallback> fallback, std::uint64_t maxWordBytes);

    NNPtr<const ShapedText> shape(std::string_view text, const std::vector<TextSpan>& spans,
                                  ParagraphDirection direction) const override;

    /// A text in one style.
    NNPtr<const ShapedText> shape(std::string_view text, const TextStyle& style,
                                  ParagraphDirection direction) const;

    ShapingCaches& getCaches() const { return _caches; }

private:
    NNPtr<const ShapedText> shape(std::string_view text, const StyleGroups& groups,
                                  ParagraphDirection direction) const;

    NNPtr<const FontEngine::FontFactory> _factory;
    std::shared_ptr<const FontLoaders::CoverageFallback> _fallback;
    mutable ShapingCaches _caches; // has a lock of its own
};

} // namespace Vell::TextLayout
