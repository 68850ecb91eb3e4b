#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/FallbackAnswers.h>
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

/// What a shaper remembers: fonts with their plans, answers of its fallback, and words. Whoever uses a plan
/// keeps its font.
struct ShapingCaches {
    explicit ShapingCaches(std::uint64_t maxWordBytes)
        : words(maxWordBytes) {}

    /// Takes the lock.
    std::shared_ptr<ShapingFont> getFont(const FontEngine::FontFace& face);

    /// What the fallback has answered for this style. Takes the lock.
    std::shared_ptr<FallbackAnswers> getFallbackAnswers(const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                                                        const TextStyle& style);

    /// Takes the lock. Valid as long as the font.
    ShapePlan& getPlan(ShapingFont& font, const ShapePlanKey& key);

    /// Those of the words. Takes the lock.
    FontEngine::CacheFigures getFigures() const;
    /// Empties the caches. Takes the lock.
    void clear();

    mutable std::mutex mutex; ///< guards everything below, and the plans of the fonts
    WordCache words;
    ScratchPool scratch; ///< has a lock of its own

private:
    static constexpr std::uint64_t maxFonts = 64;
    static constexpr std::size_t maxAnswers = 16;

    using Bytes = std::vector<unsigned char>;
    std::uint32_t _lastPlanId = 0;
    struct FontPlace {
        std::shared_ptr<ShapingFont> font;
    };
    /// Fonts keep their bytes alive, so that no other font is ever at the same address.
    MRUCache<const Bytes*, std::shared_ptr<FontPlace>, std::hash<const Bytes*>, std::equal_to<>> _fonts{
        maxFonts};
    std::vector<std::shared_ptr<FallbackAnswers>> _answers; // the latest style is the last one
};

} // namespace Vell::TextLayout
