#pragma once

#include <support/CountingLoader.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Vell::Testing {

/// Shapes texts in a way that a reader can follow: at a size of 20, each grapheme cluster is 10 units wide,
/// but 'W' 20 and 'W' alone; its first code point has the advance, and the others have glyphs without one.
/// The font "Test Sans" has every character up to U+2100; "Plain Sans" has ASCII only. The line is 16 units
/// above the base line and 4 below it. Levels are those of BidiLine, and each line of the text has its own
/// runs.
class HandShaper {
public:
    HandShaper();

    /// One glyph for "fi", 20 units wide.
    HandShaper& setLigatures() {
        _hasLigatures = true;
        return *this;
    }

    NNPtr<const TextLayout::ShapedText>
    shape(std::string_view text,
          TextLayout::ParagraphDirection direction = TextLayout::ParagraphDirection::Auto) const;

    /// Shapes spans of several styles. The result has a service for hyphens and ellipses.
    NNPtr<const TextLayout::ShapedText>
    shape(std::string_view text, const std::vector<TextLayout::TextSpan>& spans,
          TextLayout::ParagraphDirection direction = TextLayout::ParagraphDirection::Auto) const;

    /// The parts of the text in one style, to be changed.
    TextLayout::ShapedTextParts
    makeParts(std::string_view text,
              TextLayout::ParagraphDirection direction = TextLayout::ParagraphDirection::Auto) const;
    TextLayout::ShapedTextParts makeParts(std::string_view text,
                                          const std::vector<TextLayout::TextSpan>& spans,
                                          TextLayout::ParagraphDirection direction) const;

    static TextLayout::TextStyle makeStyle(const std::string& family = "Test Sans", float size = 20.0F,
                                           Gfx::TextPositionType position = Gfx::TextPositionType::Normal);

private:
    NNPtr<FontEngine::FontFactory> _factory;
    bool _hasLigatures = false;
};

} // namespace Vell::Testing
