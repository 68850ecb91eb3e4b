#pragma once

#include <support/CountingLoader.h>
#include <support/Descriptions.h>

#include <FontEngine/FE_FontFactory.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace Vell::FontEngine {

/// One character's glyph, as the fonts below were built: known without asking the engine.
struct ModelGlyph {
    const char* family;
    unsigned long index;
    float advance; ///< in ems
};

/// Two families and what they hold. "Test Sans" (1000 units per em) has the letters, the underscore, the
/// space and two characters beyond the Basic Multilingual Plane; "Symbols" (500 units per em) serves three
/// Unicode blocks, of one of which it has no character. FreeType cannot load the exclamation mark of "Test
/// Sans", which no random text contains.
class ModelFonts {
public:
    /// `loader` gets the fonts.
    explicit ModelFonts(
        std::shared_ptr<Testing::CountingLoader> loader = std::make_shared<Testing::CountingLoader>());

    const NNPtr<FontFactory>& getFactory() const { return _factory; }

    /// The glyph of the text's own font; glyph 0 where it has none.
    ModelGlyph findOwn(unsigned int codePoint) const;
    /// The same with the fallback for what the font lacks.
    ModelGlyph find(unsigned int codePoint) const;

private:
    NNPtr<FontFactory> _factory;
};

/// A text twice: its bytes and the characters that they stand for, U+FFFD for the ill-formed ones.
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

    /// The size that glyphs are drawn at.
    float getGlyphSize() const { return position == Gfx::TextPositionType::Normal ? size : size * 0.65F; }
    Testing::ExtFontInfoPtr makeExtFontInfo() const;
};

ModelSetting makeRandomSetting(std::mt19937& random);

} // namespace Vell::FontEngine
