#pragma once

#include <FontEngine/Color/FE_ColorGlyphInfo.h>
#include <Gfx/Public/FontInfo.h>
#include <TextLayout/Public/TextFeatures.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Color.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Vell::TextLayout {

/// Which font draws a cluster with emoji presentation.
enum class EmojiFont : unsigned char {
    Fallback, ///< the one that the fallback prefers for emoji, a colour font if one is installed
    OwnFont,  ///< the font of the style, if it has the cluster
};

/// How a text or a part of it looks. A plain value: set the members, or chain the setters.
///
///     const auto style = TextStyle(describeFont("DejaVu Serif", 14.0F)).setLanguage("sr").setUnderlined();
struct TextStyle {
    /// Implicit, because a font is a style.
    TextStyle(NNPtr<const Gfx::ExtFontInfo> styleFont) // NOLINT(google-explicit-constructor)
        : font(std::move(styleFont)) {}

    /// Family, bold, italic, size, position and letter spacing. A description never changes: a shaper asks
    /// each of them once, as long as it remembers the style.
    NNPtr<const Gfx::ExtFontInfo> font;
    /// A BCP 47 tag ("ja", "zh-Hant"), for the shapes of letters and for the choice of fallback fonts. Empty
    /// if it is not known: fallback then goes by the language of the process.
    std::string language = {};
    /// Beside those that fonts and scripts enable by themselves. Of several for one feature, the last counts.
    std::vector<TextFeature> features = {};
    /// To try before all other fonts when the style's own font lacks a character, most preferred first.
    std::vector<std::string> fallbackFamilies = {};
    EmojiFont emojiFont = EmojiFont::Fallback;
    /// Instead of the colour that the whole text is drawn in. Colour glyphs ignore it, and its alpha, but for
    /// the layers that ask for the text's colour.
    std::optional<cinder::ColorAT<unsigned char>> color = {};
    /// For colour glyphs, in whichever font they are. Null for the first palette of each font.
    std::shared_ptr<const FontEngine::ColorPalette> palette = nullptr;
    bool isUnderlined = false;
    bool isStruckOut = false;

    TextStyle& setLanguage(std::string value) {
        language = std::move(value);
        return *this;
    }
    TextStyle& setFeatures(std::vector<TextFeature> value) {
        features = std::move(value);
        return *this;
    }
    TextStyle& setFallbackFamilies(std::vector<std::string> value) {
        fallbackFamilies = std::move(value);
        return *this;
    }
    TextStyle& setEmojiFont(EmojiFont value) {
        emojiFont = value;
        return *this;
    }
    TextStyle& setColor(const cinder::ColorAT<unsigned char>& value) {
        color = value;
        return *this;
    }
    TextStyle& setPalette(FontEngine::ColorPalette value) {
        palette = std::make_shared<const FontEngine::ColorPalette>(std::move(value));
        return *this;
    }
    TextStyle& setUnderlined(bool value = true) {
        isUnderlined = value;
        return *this;
    }
    TextStyle& setStruckOut(bool value = true) {
        isStruckOut = value;
        return *this;
    }
};

/// A part of a text in one style: the bytes from `begin` up to, but not including, `end`.
struct TextSpan {
    std::size_t begin;
    std::size_t end;
    TextStyle style;
};

} // namespace Vell::TextLayout
