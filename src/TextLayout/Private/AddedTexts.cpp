#include <TextLayout/Private/AddedTexts.h>

#include <TextLayout/Private/ShapingService.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Vell::TextLayout {

namespace {

constexpr const char* hyphen = "\u2010";
constexpr const char* hyphenMinus = "-";
constexpr const char* tatweel = "\u0640";

/// Features for a part of the text mean nothing to an added text.
void removePartialFeatures(std::vector<TextFeature>& features) {
    const auto isPartial = [](const TextFeature& feature) {
        return feature.begin != 0 || feature.end != TextFeature::endOfText;
    };
    features.erase(std::remove_if(features.begin(), features.end(), isPartial), features.end());
}

bool isInFace(const ShapedText& text, const FontEngine::FontFace& face) {
    const auto& glyphs = text.getGlyphs();
    const auto& runs = text.getRuns();
    return std::all_of(
               runs.begin(), runs.end(),
               [&](const ShapedRun& run) { return text.getFont(run).font.getFace().get() == &face; }) &&
           std::all_of(glyphs.begin(), glyphs.end(),
                       [](const ShapedGlyph& glyph) { return glyph.index != 0; });
}

} // namespace

std::uint32_t AddedTexts::getHyphen(const ShapedRun& run) {
    if (!_text.getService()) {
        return none;
    }
    const Key key(run.font, run.style, run.isRightToLeft(), Kind::Hyphen);
    const auto known = _numbers.find(key);
    return known != _numbers.end() ? known->second : add(key, shapeHyphen(run));
}

std::uint32_t AddedTexts::getEllipsis(const ShapedRun& run, const std::string& ellipsis,
                                      BidiLevel baseLevel) {
    if (!_text.getService() || ellipsis.empty()) {
        return none;
    }
    const bool isRightToLeft = baseLevel % 2 != 0;
    const Key key(0U, run.style, isRightToLeft, Kind::Ellipsis);
    const auto known = _numbers.find(key);
    return known != _numbers.end() ? known->second : add(key, shape(ellipsis, run, isRightToLeft));
}

std::uint32_t AddedTexts::getTatweel(const ShapedRun& run) {
    if (!_text.getService()) {
        return none;
    }
    const Key key(run.font, run.style, run.isRightToLeft(), Kind::Tatweel);
    const auto known = _numbers.find(key);
    if (known != _numbers.end()) {
        return known->second;
    }
    NNPtr<const ShapedText> text = shape(tatweel, run, run.isRightToLeft());
    const bool isUsable = isInFace(*text, *_text.getFont(run).font.getFace()) &&
                          text->getGlyphs().size() == 1 && text->getGlyphs()[0].yOffset == 0 &&
                          text->getWidth() > 0.0F;
    return isUsable ? add(key, std::move(text)) : _numbers.emplace(key, none).first->second;
}

double AddedTexts::getWidth(std::uint32_t number) const {
    if (number == none) {
        return 0.0;
    }
    const float width = _added[number]->getWidth();
    return std::isfinite(width) ? static_cast<double>(width) : 0.0;
}

std::uint32_t AddedTexts::add(const Key& key, NNPtr<const ShapedText> text) {
    const auto number = static_cast<std::uint32_t>(_added.size());
    _added.push_back(std::move(text));
    _numbers.emplace(key, number);
    return number;
}

NNPtr<const ShapedText> AddedTexts::shape(std::string_view text, const ShapedRun& run,
                                          bool isRightToLeft) const {
    TextStyle style = _text.getStyle(run);
    removePartialFeatures(style.features);
    return _text.getService()->shape(text, {{0, text.size(), style}},
                                     isRightToLeft ? ParagraphDirection::RightToLeft
                                                   : ParagraphDirection::LeftToRight);
}

NNPtr<const ShapedText> AddedTexts::shapeHyphen(const ShapedRun& run) const {
    const FontEngine::FontFace& face = *_text.getFont(run).font.getFace();
    NNPtr<const ShapedText> first = shape(hyphen, run, run.isRightToLeft());
    if (isInFace(*first, face)) {
        return first;
    }
    NNPtr<const ShapedText> second = shape(hyphenMinus, run, run.isRightToLeft());
    return isInFace(*second, face) ? second : first;
}

} // namespace Vell::TextLayout
