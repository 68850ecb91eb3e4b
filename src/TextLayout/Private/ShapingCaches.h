#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/FallbackAnswers.h>
#include <TextLayout/Private/PreparedStyle.h>
#include <TextLayout/Private/ShapingFont.h>
#include <TextLayout/Private/ShapingScratch.h>
#include <TextLayout/Private/WordCache.h>
#include <TextLayout/Public/TextStyle.h>
#include <Utils/Public/MRUCache.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace Vell::TextLayout {

/// What a shaper remembers: styles, fonts with their plans, answers of its fallback, and words. Whoever uses
/// a plan keeps its font. The functions require the lock, unless they say that they take it.
struct ShapingCaches {
    explicit ShapingCaches(std::uint64_t maxWordBytes)
        : words(maxWordBytes) {}

    /// What is known of a style since the factory was reset for the last time, if texts in it may share the
    /// look. Null if nothing is known.
    std::shared_ptr<PreparedStyle> findStyle(const TextStyle& style, std::uint64_t resetCount);
    /// The same if texts in it have the same glyphs. `fontInfo` is that of the style.
    std::shared_ptr<PreparedStyle> findEqualStyle(const TextStyle& style, const Gfx::FontInfo& fontInfo,
                                                  std::uint64_t resetCount);
    /// Returns what gives way. Destroy it without the lock, because descriptions are the client's.
    std::shared_ptr<PreparedStyle> put(std::shared_ptr<PreparedStyle> style);

    std::shared_ptr<ShapingFont> getFont(const FontEngine::FontFace& face);

    /// What the fallback has answered for this style.
    std::shared_ptr<FallbackAnswers> getFallbackAnswers(const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                                                        const TextStyle& style);

    /// Valid as long as the font.
    ShapePlan& getPlan(ShapingFont& font, const ShapePlanKey& key);

    /// Those of the words. Takes the lock.
    FontEngine::CacheFigures getFigures() const;
    /// Empties the caches. Takes the lock.
    void clear();

    mutable std::mutex mutex; ///< guards everything below, and the plans of the fonts
    WordCache words;
    std::vector<ShapedGlyph> spareGlyphs; ///< empty, but with memory for the next text
    ScratchPool scratch;

private:
    static constexpr std::uint64_t maxFonts = 64;
    static constexpr std::size_t maxAnswers = 16;
    static constexpr std::size_t maxStyles = 16;

    using Bytes = std::vector<unsigned char>;
    std::uint32_t _lastPlanId = 0;
    struct FontPlace {
        std::shared_ptr<ShapingFont> font;
    };
    /// Fonts keep their bytes alive, so that no other font is ever at the same address.
    MRUCache<const Bytes*, std::shared_ptr<FontPlace>, std::hash<const Bytes*>, std::equal_to<>> _fonts{
        maxFonts};
    std::vector<std::shared_ptr<FallbackAnswers>> _answers; // the latest style is the last one
    std::vector<std::shared_ptr<PreparedStyle>> _styles;    // in the same order
};

} // namespace Vell::TextLayout
