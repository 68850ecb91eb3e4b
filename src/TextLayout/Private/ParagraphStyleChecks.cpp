#include <TextLayout/Private/ParagraphStyleChecks.h>

#include <TextLayout/Public/TextLayoutException.h>

#include <cmath>
#include <sstream>

namespace Vell::TextLayout {

namespace {

[[noreturn]] void throwBadLength(const char* what, float value, const char* expectation) {
    std::ostringstream message;
    message << what << " of " << value << " is not " << expectation;
    throw TextLayoutException(message.str());
}

void checkFinite(const char* what, float value) {
    if (!std::isfinite(value) || value < 0.0F) {
        throwBadLength(what, value, "a finite length of at least 0");
    }
}

void checkTabStops(const std::vector<float>& stops) {
    float before = 0.0F;
    for (const float stop : stops) {
        checkFinite("a tab stop", stop);
        if (stop < before) {
            throwBadLength("a tab stop", stop, "behind the one before it");
        }
        before = stop;
    }
}

} // namespace

void checkParagraphStyle(const ParagraphStyle& style) {
    if (std::isnan(style.width) || style.width < 0.0F) {
        throwBadLength("a width", style.width, "a length of at least 0");
    }
    checkFinite("a line height", style.lineHeight);
    checkFinite("a tab distance", style.tabDistance);
    checkTabStops(style.tabStops);
    if (style.maxLines == 0) {
        throw TextLayoutException("a paragraph of at most 0 lines");
    }
}

} // namespace Vell::TextLayout
