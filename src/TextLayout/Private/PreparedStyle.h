#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <TextLayout/Private/DrawnCharacters.h>
#include <TextLayout/Private/FallbackAnswers.h>
#include <TextLayout/Private/PlanTable.h>
#include <TextLayout/Public/ShapedText.h>
#include <TextLayout/Public/TextStyle.h>

#include <hb.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace Vell::TextLayout {

/// The look of the texts in one style, with its own font, and what shaping finds out about it once for all of
/// them. Texts that share the look keep all of it alive. The lock of the caches guards what changes.
struct PreparedStyle : TextLook {
    /// Throws TextLayoutException if the language is no well-formed BCP 47 tag, and what the factory throws.
    PreparedStyle(const FontEngine::FontFactory& factory, const TextStyle& style);

    const TextStyle& getStyle() const { return styles.front(); }
    const RunFont& getOwnFont() const { return fonts.front(); }
    const FontEngine::FontFace& getFace() const { return *getOwnFont().font.getFace(); }

    /// Whether texts in `style` may share the look.
    bool isExactly(const TextStyle& style) const;
    /// Whether texts in `style` have the same glyphs, as long as the face is the same. `styleInfo` is that of
    /// the style.
    bool isFor(const TextStyle& style, const Gfx::FontInfo& styleInfo) const;

    const std::uint64_t resetCount; ///< of the factory
    const NNPtr<const Gfx::FontInfo> fontInfo;
    DrawnCharacters drawnCharacters; ///< of its own font
    const hb_language_t language;
    const bool hasPartialFeatures;            ///< some are not for whole texts
    PlanTable plans;                          ///< if all features are for whole texts
    std::shared_ptr<FallbackAnswers> answers; ///< null until they are needed

private:
    /// The resets are counted before the factory makes the font, which may be reset meanwhile.
    PreparedStyle(const FontEngine::FontFactory& factory, const TextStyle& style, std::uint64_t resetsBefore,
                  const NNPtr<const Gfx::FontInfo>& styleInfo);
};

/// What is known of a style that a text has.
struct StyleInUse {
    std::shared_ptr<PreparedStyle> prepared;
    bool isExact; ///< whether texts in this style may share the look
};

} // namespace Vell::TextLayout
