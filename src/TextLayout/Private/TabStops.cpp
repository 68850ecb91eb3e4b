#include <TextLayout/Private/TabStops.h>

#include <algorithm>
#include <cmath>

namespace Vell::TextLayout {

namespace {

constexpr float spacesInATab = 8.0F;

double getDefaultTabDistance(const ShapedText& text) {
    if (text.getFonts().empty()) {
        return 0.0;
    }
    const FontEngine::Font& font = text.getFonts().front().font;
    const float space = font.getFace()->getBasicMetrics().getCharMap()[' '].advance;
    const float distance = spacesInATab * space * font.getFontSize();
    return std::isfinite(distance) ? static_cast<double>(distance) : 0.0;
}

} // namespace

TabStops::TabStops(const ParagraphStyle& style, const ShapedText& text)
    : _stops(style.tabStops)
    , _distance(style.tabDistance > 0.0F ? static_cast<double>(style.tabDistance)
                                         : getDefaultTabDistance(text)) {}

double TabStops::findNext(double pen) const {
    const double tolerance = _distance / 65536.0; // the pen may have missed a stop by a rounding error
    const auto stop = std::upper_bound(_stops.begin(), _stops.end(), pen + tolerance,
                                       [](double x, float at) { return x < static_cast<double>(at); });
    if (stop != _stops.end()) {
        return static_cast<double>(*stop);
    }
    if (!(_distance > 0.0)) {
        return pen;
    }
    return std::max(pen, (std::floor((pen + tolerance) / _distance) + 1.0) * _distance);
}

} // namespace Vell::TextLayout
