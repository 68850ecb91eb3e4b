#pragma once

#include <support/CountingLoader.h>
#include <support/Descriptions.h>

#include <FontEngine/FE_FontFactory.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace Vell::FontEngine {

/// The glyph of a character, known from how the fonts below are built, without the engine.
struct ModelGlyph {
    const char* family;
    unsigned long index;
    float advance; ///< in ems
};

/// Two families and their glyphs. "Test Sans" (1000 units per em) has the letters, the underscore, the space
/// and two characters beyond the Basic Multilingual Plane. "Symbols" (500 units per em) serves three Unicode
/// blocks, but has no character of one of them. FreeType cannot load the exclamation mark of "Test Sans", and
/// no random text contains it.
class ModelFonts {
public:
    /// Adds the fonts to `loader`.
    explicit ModelFonts(
        std::shared_ptr<Testing::CountingLoader> loader = std::make_shared<Testing::CountingLoader>());

    const NNPtr<FontFactory>& getFactory() const { return _factory; }

    /// Returns the glyph of the text's own font, or glyph 0 if it has none.
    ModelGlyph findOwn(unsigned int codePoint) const;
    /// Returns the glyph of the text's own font or, if it has none, of the fallback font.
    ModelGlyph find(unsigned int codePoint) const;

private:
    NNPtr<FontFactory> _factory;
};

/// A text as bytes and as the characters that they decode to, with U+FFFD for ill-formed bytes.
struct ModelText {
    std::string bytes;
    std::vector<unsigned int> codePoints;
};

ModelText makeRandomText(std::mt19937& random);

/// How a text is set.
struct ModelSetting {
    float size; ///< of the description
    Gfx::TextPositionType position;
    float letterSpacing;
    float ratio;
    cinder::Vec2<float> scale;
    bool flipVertically;

    /// The size at which glyphs are drawn.
    float getGlyphSize() const { return position == Gfx::TextPositionType::Normal ? size : size * 0.65F; }
    Testing::ExtFontInfoPtr makeExtFontInfo() const;
};

ModelSetting makeRandomSetting(std::mt19937& random);

} // namespace Vell::FontEngine
