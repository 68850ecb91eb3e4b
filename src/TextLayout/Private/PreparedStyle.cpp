#include <TextLayout/Private/PreparedStyle.h>

#include <TextLayout/Private/AllocationWatch.h>
#include <TextLayout/Private/StyleGroups.h>
#include <TextLayout/Public/TextLayoutException.h>

#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// Throws TextLayoutException if the tag is not well-formed.
hb_language_t makeLanguage(const std::string& tag) {
    if (tag.empty()) {
        return HB_LANGUAGE_INVALID;
    }
    std::array<char, ULOC_FULLNAME_CAPACITY> locale{};
    std::int32_t parsed = 0;
    UErrorCode status = U_ZERO_ERROR;
    uloc_forLanguageTag(tag.c_str(), locale.data(), static_cast<std::int32_t>(locale.size()), &parsed,
                        &status);
    if (U_FAILURE(status) || static_cast<std::size_t>(parsed) != tag.size()) {
        throw TextLayoutException("\"" + tag + "\" is not a well-formed BCP 47 language tag");
    }
    const AllocationWatch watch;
    const hb_language_t language = hb_language_from_string(tag.data(), static_cast<int>(tag.size()));
    if (watch.hasFailed()) {
        throw std::bad_alloc();
    }
    return language;
}

TextLook makeLook(const FontEngine::FontFactory& factory, const TextStyle& style,
                  const NNPtr<const Gfx::FontInfo>& fontInfo) {
    TextLook look;
    look.styles.push_back(style);
    look.fonts.push_back(
        {fontInfo->getFontFaceInfo(), factory.getFont(fontInfo), style.font->getLetterSpacing()});
    return look;
}

bool isPartial(const TextFeature& feature) {
    return feature.begin != 0 || feature.end != TextFeature::endOfText;
}

} // namespace

PreparedStyle::PreparedStyle(const FontEngine::FontFactory& factory, const TextStyle& style)
    : PreparedStyle(factory, style, factory.getResetCount(), style.font->getFontInfo()) {}

PreparedStyle::PreparedStyle(const FontEngine::FontFactory& factory, const TextStyle& style,
                             std::uint64_t resetsBefore, const NNPtr<const Gfx::FontInfo>& styleInfo)
    : TextLook(makeLook(factory, style, styleInfo))
    , resetCount(resetsBefore)
    , fontInfo(styleInfo)
    , drawnCharacters(getFace().getBasicMetrics().getCharMap())
    , language(makeLanguage(style.language))
    , hasPartialFeatures(std::any_of(style.features.begin(), style.features.end(), isPartial)) {}

bool PreparedStyle::isExactly(const TextStyle& style) const {
    return getStyle().font.get() == style.font.get() && haveEqualGlyphs(getStyle(), style) &&
           haveEqualPaint(getStyle(), style);
}

bool PreparedStyle::isFor(const TextStyle& style, const Gfx::FontInfo& styleInfo) const {
    return (fontInfo.get() == &styleInfo || *fontInfo == styleInfo) &&
           getOwnFont().letterSpacing == style.font->getLetterSpacing() && haveEqualGlyphs(getStyle(), style);
}

} // namespace Vell::TextLayout
