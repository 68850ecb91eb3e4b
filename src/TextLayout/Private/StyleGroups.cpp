#include <TextLayout/Private/StyleGroups.h>

#include <Utils/Public/Assert.h>

namespace Vell::TextLayout {

namespace {

bool areEqual(const NNPtr<const Gfx::ExtFontInfo>& lhs, const NNPtr<const Gfx::ExtFontInfo>& rhs) {
    if (lhs.get() == rhs.get()) {
        return true;
    }
    const auto left = lhs->getFontInfo();
    const auto right = rhs->getFontInfo();
    return lhs->getLetterSpacing() == rhs->getLetterSpacing() && left->getSize() == right->getSize() &&
           left->getTextPositionType() == right->getTextPositionType() &&
           *left->getFontFaceInfo() == *right->getFontFaceInfo();
}

void assertCovered(bool isCovered) {
    if (!isCovered) {
        doFailAssert("TextLayout/Public/TextShaper", 50, "spans are in order and cover the text");
    }
}

} // namespace

bool haveEqualGlyphs(const TextStyle& lhs, const TextStyle& rhs) {
    return areEqual(lhs.font, rhs.font) && lhs.language == rhs.language && lhs.features == rhs.features &&
           lhs.fallbackFamilies == rhs.fallbackFamilies && lhs.emojiFont == rhs.emojiFont;
}

bool haveEqualPaint(const TextStyle& lhs, const TextStyle& rhs) {
    const auto areSame = [](const auto& left, const auto& right) {
        return left.has_value() == right.has_value() &&
               (!left ||
                (left->r == right->r && left->g == right->g && left->b == right->b && left->a == right->a));
    };
    const bool havePalettes = lhs.palette && rhs.palette;
    const bool haveSamePalette = havePalettes ? *lhs.palette == *rhs.palette : lhs.palette == rhs.palette;
    return areSame(lhs.color, rhs.color) && haveSamePalette && lhs.isUnderlined == rhs.isUnderlined &&
           lhs.isStruckOut == rhs.isStruckOut;
}

StyleGroups::StyleGroups(std::string_view text, const std::vector<TextSpan>& spans) {
    std::size_t covered = 0;
    for (const TextSpan& span : spans) {
        assertCovered(span.begin == covered && span.end >= span.begin);
        covered = span.end;
        if (span.begin != span.end || (text.empty() && _spans.empty())) {
            add(span);
        }
    }
    assertCovered(covered == text.size());
}

StyleGroups::StyleGroups(std::string_view text, const TextStyle& style)
    : _groupCount(1) {
    _styles.push_back(&style);
    _spans.push_back({0, static_cast<std::uint32_t>(text.size()), 0, 0});
}

std::vector<TextStyle> StyleGroups::copyStyles() const {
    std::vector<TextStyle> copies;
    copies.reserve(_styles.size());
    for (const TextStyle* const style : _styles) {
        copies.push_back(*style);
    }
    return copies;
}

void StyleGroups::add(const TextSpan& span) {
    const auto begin = static_cast<std::uint32_t>(span.begin);
    const auto end = static_cast<std::uint32_t>(span.end);
    const bool isOfLastGroup = !_styles.empty() && haveEqualGlyphs(*_styles.back(), span.style);
    if (isOfLastGroup && haveEqualPaint(*_styles.back(), span.style)) {
        _spans.back().end = end;
        return;
    }
    _styles.push_back(&span.style);
    _groupCount += isOfLastGroup ? 0 : 1;
    _spans.push_back({begin, end, static_cast<std::uint32_t>(_styles.size() - 1), _groupCount - 1});
}

} // namespace Vell::TextLayout
