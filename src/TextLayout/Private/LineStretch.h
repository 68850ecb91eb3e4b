#pragma once

#include <TextLayout/Private/ParagraphLayout.h>

#include <vector>

namespace Vell::TextLayout {

/// What fills a line.
struct LineStretch {
    double gap = 0.0;                           ///< for each gap
    double elongation = 0.0;                    ///< for each elongated place
    std::vector<ElongatedPlace> elongated = {}; ///< in logical order
};

/// Shares `slack`, which is positive, among the gaps of a line and the words that can be elongated: all get
/// the same, but an elongation is as wide as a tatweel at least, and half an em at most. Words with the worst
/// ranks get nothing if there is too little. All is 0 if nothing can fill the line.
LineStretch findLineStretch(ParagraphLayout& layout, const ParagraphLine& line, double slack);

} // namespace Vell::TextLayout
