#pragma once

#include <TextLayout/Public/ParagraphStyle.h>
#include <TextLayout/Public/ShapedText.h>

#include <vector>

namespace Vell::TextLayout {

/// The tab stops of a paragraph: those of its style, then equidistant ones.
class TabStops {
public:
    TabStops(const ParagraphStyle& style, const ShapedText& text);

    /// The first stop behind a distance from the start of the line.
    double findNext(double pen) const;

private:
    std::vector<float> _stops;
    double _distance;
};

} // namespace Vell::TextLayout
