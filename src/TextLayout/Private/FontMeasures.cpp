#include <TextLayout/Private/FontMeasures.h>

#include <TextLayout/Private/BitmapFontLines.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Vell::TextLayout {

namespace {

/// Sums of the numbers that remain are finite.
float makeFinite(float value) {
    constexpr float limit = 1e30F;
    return std::abs(value) < limit ? value : 0.0F;
}

double getFontUnit(const RunFont& font) {
    const double unit =
        static_cast<double>(makeFinite(font.font.getFontSize())) / static_cast<double>(font.getUnitsPerEM());
    return std::isfinite(unit) ? unit : 0.0;
}

void takeLines(const BitmapFontLines& lines, FontMeasures& measures) {
    const auto measure = [&](int units) { return makeFinite(static_cast<float>(measures.fontUnit * units)); };
    measures.ascent = measure(lines.ascent);
    measures.descent = measure(lines.descent);
    measures.leading = measure(lines.leading);
    measures.strikeOut = measure(lines.strikeOut);
}

} // namespace

FontMeasures measureFont(const RunFont& font) {
    FontMeasures measures{getFontUnit(font),
                          static_cast<double>(makeFinite(font.letterSpacing)),
                          makeFinite(font.font.getBaseLineShift()),
                          makeFinite(font.font.getAscent()),
                          makeFinite(font.font.getDescent()),
                          makeFinite(font.font.getLeading()),
                          makeFinite(font.font.getStrikeOutPosition())};
    if (font.font.getFace()->getHandle()->units_per_EM == 0) {
        takeLines(readBitmapFontLines(*font.font.getFace()), measures);
    }
    return measures;
}

float toFloat(double value) {
    constexpr auto limit = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(std::clamp(value, -limit, limit));
}

} // namespace Vell::TextLayout
