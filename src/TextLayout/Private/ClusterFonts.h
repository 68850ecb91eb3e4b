#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <FontLoaders/Public/CoverageFallback.h>
#include <TextLayout/Private/FallbackAnswers.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Public/ShapedText.h>
#include <TextLayout/Public/TextStyle.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// Chooses the fonts of one style in one text: its own font for all clusters that it has, fallback fonts for
/// the others.
class ClusterFonts {
public:
    /// Adds the style's own font to `fonts`, to which fallback fonts are added as they are needed. The
    /// arguments must outlive this object. `fallback` may be null.
    ClusterFonts(const FontEngine::FontFactory& factory, const FontLoaders::CoverageFallback* fallback,
                 ShapingCaches& caches, const TextStyle& style, std::vector<RunFont>& fonts);

    /// The index of the font for a grapheme cluster.
    std::uint32_t find(std::string_view cluster);

private:
    struct FallbackFont {
        FallbackFace face;
        std::uint32_t font;
    };

    bool ownFontHas(char32_t character) const;
    bool ownFontHas(const std::u32string& cluster) const;
    bool ownFontServes(const std::u32string& cluster);
    bool prefersFallback(const std::u32string& cluster) const;
    FallbackFace choose(const std::u32string& cluster);
    std::uint32_t findFont(const FallbackFace& face);
    std::uint32_t addFallback(const FallbackFace& face);
    std::uint32_t addFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                          const NNPtr<const Gfx::FontInfo>& fontInfo);

    const FontEngine::FontFactory& _factory;
    const FontLoaders::CoverageFallback* _fallback;
    ShapingCaches& _caches;
    const TextStyle& _style;
    std::vector<RunFont>& _fonts;
    NNPtr<const Gfx::FontInfo> _fontInfo;
    std::uint32_t _ownFont;
    const Gfx::CharMap* _ownCharMap;
    std::shared_ptr<ShapingFont> _ownShapingFont; // null until it is needed
    std::shared_ptr<FallbackAnswers> _answers;    // null until they are needed
    std::vector<FallbackFont> _fallbackFonts;
};

} // namespace Vell::TextLayout
