#pragma once

#include "drawing/Color.h"
#include "fonts/FontSource.h"
#include "fonts/RecordingCoverage.h"
#include "fonts/ShapingRequest.h"

#include <TextLayout/TextLayout.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Vell::Tool {

/// These two throw UsageError, whose text names the word.
TextLayout::ParagraphDirection parseDirection(const std::string& word);
std::vector<TextLayout::TextFeature> parseFeatures(const std::string& list);

/// Shapes texts in a font as a user names it. A font file draws whatever it has glyphs for, emoji included;
/// beside a family, emoji go to fonts for emoji. What the font lacks comes from installed fonts.
///
///     const FontShaper shaper(font, {"-liga", "sr", "auto"});
///     const auto text = shaper.shape("a text");
class FontShaper {
public:
    /// Throws UsageError if a word of the request is malformed, ToolError if there is no such font.
    FontShaper(const FontRequest& font, const ShapingRequest& request, bool recordsCoverage = false);

    NNPtr<const TextLayout::ShapedText> shape(std::string_view text) const;
    /// In a colour, for the layers of colour glyphs that take it.
    NNPtr<const TextLayout::ShapedText> shape(std::string_view text, const Color& color) const;

    const FontSource& getSource() const { return _source; }
    const TextFont& getFont() const { return _font; }
    /// The questions to the fallback; null unless it was to record them.
    const RecordingCoverage* getCoverage() const { return _coverage.get(); }

private:
    void checkLanguage() const;

    FontSource _source;
    TextFont _font;
    std::shared_ptr<const FontLoaders::CoverageFallback> _fallback; // may be null
    std::shared_ptr<const RecordingCoverage> _coverage;
    TextLayout::TextShaper _shaper;
    TextLayout::TextStyle _style;
    TextLayout::ParagraphDirection _direction;
};

} // namespace Vell::Tool
