#pragma once

namespace Vell::TextLayout {

class ShapedText;

/// What a Paragraph needs to know of a shaped text at every width.
class TextMeasures {
public:
    explicit TextMeasures(const ShapedText& text);
};

} // namespace Vell::TextLayout
