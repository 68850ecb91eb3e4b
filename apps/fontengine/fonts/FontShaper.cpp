#include "fonts/FontShaper.h"

#include "Errors.h"

#include <fmt/format.h>

namespace Vell::Tool {

namespace {

TextLayout::TextStyle makeStyle(const TextFont& font, const FontRequest& request,
                                const ShapingRequest& shaping) {
    TextLayout::TextStyle style(font.setting);
    style.palette = font.palette;
    return style.setLanguage(shaping.language)
        .setFeatures(parseFeatures(shaping.features))
        .setEmojiFont(request.file ? TextLayout::EmojiFont::OwnFont : TextLayout::EmojiFont::Fallback);
}

/// Names the default family, so that a fallback to it is none.
TextFont openFont(const FontSource& source, FontRequest request) {
    const bool isDefault = !request.file && request.family.empty() && request.variations.empty();
    if (!isDefault || !isInstalled(source.getFactory(), {defaultFamily})) {
        return source.makeFont(request);
    }
    request.family = defaultFamily;
    return makeTextFont(source.getFactory(), request);
}

} // namespace

TextLayout::ParagraphDirection parseDirection(const std::string& word) {
    if (word == "auto") {
        return TextLayout::ParagraphDirection::Auto;
    }
    if (word == "ltr" || word == "rtl") {
        return word == "ltr" ? TextLayout::ParagraphDirection::LeftToRight
                             : TextLayout::ParagraphDirection::RightToLeft;
    }
    throw UsageError(fmt::format("--direction must be auto, ltr or rtl, not '{}'", word));
}

std::vector<TextLayout::TextFeature> parseFeatures(const std::string& list) {
    try {
        return TextLayout::parseTextFeatures(list);
    } catch (const TextLayout::TextLayoutException& error) {
        throw UsageError(fmt::format("--features '{}' is malformed: {}", list, error.what()));
    }
}

FontShaper::FontShaper(const FontRequest& font, const ShapingRequest& request, bool recordsCoverage)
    : _source(font)
    , _font(openFont(_source, font))
    , _fallback(_source.makeCoverageFallback())
    , _coverage(recordsCoverage ? std::make_shared<const RecordingCoverage>(_fallback) : nullptr)
    , _shaper(_source.getFactory(), _coverage ? _coverage : _fallback)
    , _style(makeStyle(_font, font, request))
    , _direction(parseDirection(request.direction)) {
    checkLanguage();
}

/// The shaper and the fallback check the tag when they see it.
void FontShaper::checkLanguage() const {
    if (_style.language.empty()) {
        return;
    }
    try {
        _shaper.shape("", _style);
        if (_fallback) {
            _fallback->findFace({U" ", _style.font->getFontInfo()->getFontFaceInfo(), _style.language});
        }
    } catch (const TextLayout::TextLayoutException& error) {
        throw UsageError(fmt::format("--language is malformed: {}", error.what()));
    } catch (const FontLoaders::FontLoaderException& error) {
        throw UsageError(fmt::format("--language is malformed: {}", error.what()));
    }
}

NNPtr<const TextLayout::ShapedText> FontShaper::shape(std::string_view text) const {
    return _shaper.shape(text, _style, _direction);
}

NNPtr<const TextLayout::ShapedText> FontShaper::shape(std::string_view text, const Color& color) const {
    return _shaper.shape(text, TextLayout::TextStyle(_style).setColor(color), _direction);
}

} // namespace Vell::Tool
