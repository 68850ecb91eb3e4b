#pragma once

#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontLoaders/Public/CoverageFallback.h>
#include <TextLayout/Public/BidiLine.h>
#include <TextLayout/Public/ShapedText.h>
#include <TextLayout/Public/TextStyle.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

class TextShaping;

/// Turns texts into glyphs, in every script: finds directions, scripts and fallback fonts, and lets HarfBuzz
/// shape the runs.
///
///     const TextLayout::TextShaper shaper(factory);
///     const auto text = shaper.shape("Price: 12", describeFont("DejaVu Sans", 16.0F));
///
/// Keep a shaper as long as you draw text. It has a cache of shaped words, in the order of most recent use,
/// so shaping a word again costs a look-up.
///
/// Threads: any number of threads may use a shaper. Errors: those of the factory and of the fallback;
/// TextLayoutException if the text is too long, if a language is not a well-formed BCP 47 tag, or if a font
/// makes more than 65536 glyphs and 4 for each byte of the text; std::bad_alloc. A call that throws caches
/// nothing wrong.
///
/// Cost: linear in the length of the text. A grapheme cluster of more than 512 bytes is divided.
class TextShaper {
public:
    /// The words that a shaper caches by default take up to this many bytes.
    static constexpr std::uint64_t defaultMaxWordBytes = std::uint64_t{4} << 20U;

    /// Finds fallback fonts with createPlatformCoverageFallback if the factory's fonts are the installed
    /// ones. For all other factories, the loader's family for the Unicode range of a character serves, as in
    /// the core.
    VELL_API explicit TextShaper(NNPtr<const FontEngine::FontFactory> factory,
                                 std::uint64_t maxWordBytes = defaultMaxWordBytes);
    /// Finds fallback fonts with `fallback`. If that is null, there are none.
    VELL_API TextShaper(NNPtr<const FontEngine::FontFactory> factory,
                        std::shared_ptr<const FontLoaders::CoverageFallback> fallback,
                        std::uint64_t maxWordBytes = defaultMaxWordBytes);
    VELL_API ~TextShaper();

    TextShaper(const TextShaper&) = delete;
    TextShaper& operator=(const TextShaper&) = delete;

    /// Shapes a text in one style. Each ill-formed part of the UTF-8 counts as one U+FFFD.
    VELL_API NNPtr<const ShapedText> shape(std::string_view text, const TextStyle& style,
                                           ParagraphDirection direction = ParagraphDirection::Auto) const;

    /// Shapes a text in several styles. The spans must be in order and cover the text; anything else is a
    /// failed assertion. Letters join and kern across spans that differ only in colours and lines.
    VELL_API NNPtr<const ShapedText> shape(std::string_view text, const std::vector<TextSpan>& spans,
                                           ParagraphDirection direction = ParagraphDirection::Auto) const;

    /// The contents and statistics of the cache of words.
    VELL_API FontEngine::CacheFigures getCacheFigures() const;

    /// Empties the cache of words and lets go of the fonts, also of those that the factory has dropped. Texts
    /// stay valid.
    VELL_API void flush();

private:
    std::shared_ptr<const TextShaping> _service;
};

} // namespace Vell::TextLayout
