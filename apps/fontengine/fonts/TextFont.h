#pragma once

#include <FontEngine/FontEngine.h>

#include <memory>
#include <optional>
#include <string>

namespace Vell::Tool {

using FactoryPtr = NNPtr<FontEngine::FontFactory>;

/// The family of texts for which no font is named.
constexpr const char* defaultFamily = "DejaVu Sans";

/// What the options say about a font.
struct FontRequest {
    std::string family; ///< empty: the default one
    bool isBold = false;
    bool isItalic = false;
    float size = 32.0F;
    float letterSpacing = 0.0F;
    std::optional<std::string> file = std::nullopt; ///< FILE[:INDEX], instead of a family
    std::string variations = {};                    ///< as FontLoaders::parseVariations reads them
    unsigned short palette = 0;                     ///< of colour glyphs
};

/// A font, and how text is set in it.
struct TextFont {
    std::shared_ptr<const FontEngine::Font> font; ///< never null
    NNPtr<const Gfx::ExtFontInfo> setting;
    std::shared_ptr<const FontEngine::ColorPalette> palette; ///< null for the first one
};

/// Whether the family has a font in any style. The empty one always has.
bool isInstalled(const FactoryPtr& factory, const FontRequest& request);

/// The font of the requested family, its missing styles synthesised. Throws ToolError when the factory has no
/// such family, because another font would surprise whoever named it, and when the font cannot be opened.
TextFont makeTextFont(const FactoryPtr& factory, const FontRequest& request);

/// The font that draws a character: this font, or the fallback font if this one lacks the character. Without
/// a fallback, this font draws its missing-glyph symbol.
TextFont chooseFont(const TextFont& font, unsigned int codePoint);

bool hasGlyph(const TextFont& font, unsigned int codePoint);

/// Whether the engine may draw glyphs of the font in their own colours.
bool hasColors(const TextFont& font);

/// The name of the font for messages: the family or file that was asked for, or the family name in the file
/// of the default font.
std::string getAskedName(const TextFont& font);

} // namespace Vell::Tool
