#pragma once

#include <FontEngine/FontEngine.h>

#include <memory>
#include <string>

namespace Vell::Tool {

using FactoryPtr = NNPtr<FontEngine::FontFactory>;

/// The family for texts that name none.
constexpr const char* defaultFamily = "DejaVu Sans";

/// What the options say about a font. An empty family means the default one.
struct FontRequest {
    std::string family;
    bool isBold = false;
    bool isItalic = false;
    float size = 32.0F;
    float letterSpacing = 0.0F;
};

/// A font and how text is set in it.
struct TextFont {
    std::shared_ptr<const FontEngine::Font> font; ///< never null
    NNPtr<const Gfx::ExtFontInfo> setting;
};

/// Whether the family has a font in any style; the empty one has.
bool isInstalled(const FactoryPtr& factory, const FontRequest& request);

/// The installed font for a request, its missing styles synthesised. Throws ToolError when the family is not
/// installed: another font would surprise whoever named it.
TextFont makeTextFont(const FactoryPtr& factory, const FontRequest& request);

/// The font that draws a character: this one, or the fallback font where this one lacks it. If there is no
/// fallback, this one draws its missing-glyph symbol.
TextFont chooseFont(const TextFont& font, unsigned int codePoint);

bool hasGlyph(const TextFont& font, unsigned int codePoint);

} // namespace Vell::Tool
