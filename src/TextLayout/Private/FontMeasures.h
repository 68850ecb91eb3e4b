#pragma once

#include <TextLayout/Public/ShapedText.h>

namespace Vell::TextLayout {

/// What lines need to know of a font, in the units of the font size. A value that is not finite, or
/// beyond 1e30, is 0 instead, as it is for bitmap fonts without an em and for absurd sizes. Bitmap fonts in
/// the format of TrueType and OpenType have an em and lines (BitmapFontLines.h).
struct FontMeasures {
    double fontUnit;
    double letterSpacing;
    float shift; ///< of the base line, up
    float ascent;
    float descent;
    float leading;
    float strikeOut; ///< up to the lower edge
};

FontMeasures measureFont(const RunFont& font);

/// The nearest number that a float can hold.
float toFloat(double value);

} // namespace Vell::TextLayout
