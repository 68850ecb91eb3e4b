#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <FontLoaders/Public/CoverageFallback.h>
#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/CachesLock.h>
#include <TextLayout/Private/FallbackAnswers.h>
#include <TextLayout/Private/PreparedStyle.h>
#include <TextLayout/Private/ShapingBuffer.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Private/TextFonts.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// What chooses fonts.
struct FontSource {
    const FontEngine::FontFactory& factory;
    const FontLoaders::CoverageFallback* fallback; ///< null if there is none
    ShapingCaches& caches;
    CachesLock& lock;
};

/// Chooses the fonts of one style in one text: its own font for all clusters that it has, fallback fonts for
/// the others. Its functions require the lock, and let go of it while they ask the fallback and the factory.
class ClusterFonts {
public:
    /// `ownFont` is the index of the style's own font in `fonts`, to which fallback fonts are added as they
    /// are needed. The arguments must outlive this object.
    ClusterFonts(const FontSource& source, PreparedStyle& style, std::uint32_t ownFont, TextFonts& fonts);

    std::uint32_t getOwnFont() const { return _ownFont; }

    /// The end of the clusters at the front of a part that the own font draws, as far as that is easily
    /// found. The part begins and ends with clusters.
    std::uint32_t findEndOfOwn(std::string_view text, const ByteSet& clusterStarts,
                               const TextPart& part) const;

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

    FontSource _source;
    PreparedStyle& _prepared;
    const TextStyle& _style;
    std::uint32_t _ownFont;
    TextFonts& _fonts;
    const Gfx::CharMap* _ownCharMap;
    std::shared_ptr<ShapingFont> _ownShapingFont; // null until it is needed
    std::vector<FallbackFont> _fallbackFonts;
};

} // namespace Vell::TextLayout
