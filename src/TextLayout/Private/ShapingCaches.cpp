#include <TextLayout/Private/ShapingCaches.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// Makes the element the latest one.
template <class Pointer>
const Pointer& makeLatest(std::vector<Pointer>& pointers, typename std::vector<Pointer>::iterator found) {
    if (found + 1 != pointers.end()) {
        std::rotate(found, found + 1, pointers.end());
    }
    return pointers.back();
}

using Styles = std::vector<std::shared_ptr<PreparedStyle>>;

template <class Predicate>
std::shared_ptr<PreparedStyle> findStyle(Styles& styles, const Predicate& isWanted,
                                         std::uint64_t resetCount) {
    const auto found =
        std::find_if(styles.rbegin(), styles.rend(), [&](const auto& known) { return isWanted(*known); });
    if (found == styles.rend() || (*found)->resetCount != resetCount) {
        return nullptr;
    }
    return makeLatest(styles, std::prev(found.base()));
}

} // namespace

std::shared_ptr<PreparedStyle> ShapingCaches::findStyle(const TextStyle& style, std::uint64_t resetCount) {
    return TextLayout::findStyle(
        _styles, [&](const PreparedStyle& known) { return known.isExactly(style); }, resetCount);
}

std::shared_ptr<PreparedStyle> ShapingCaches::findEqualStyle(const TextStyle& style,
                                                             const Gfx::FontInfo& fontInfo,
                                                             std::uint64_t resetCount) {
    return TextLayout::findStyle(
        _styles, [&](const PreparedStyle& known) { return known.isFor(style, fontInfo); }, resetCount);
}

std::shared_ptr<PreparedStyle> ShapingCaches::put(std::shared_ptr<PreparedStyle> style) {
    _styles.reserve(maxStyles);
    const auto found = std::find_if(_styles.begin(), _styles.end(), [&](const auto& known) {
        return known->isFor(style->getStyle(), *style->fontInfo);
    });
    if (found == _styles.end() && _styles.size() != maxStyles) {
        _styles.push_back(std::move(style));
        return nullptr;
    }
    makeLatest(_styles, found != _styles.end() ? found : _styles.begin());
    return std::exchange(_styles.back(), std::move(style));
}

std::shared_ptr<ShapingFont> ShapingCaches::getFont(const FontEngine::FontFace& face) {
    const NNPtr<const Bytes> bytes = face.getFaceData().bytes;
    const auto makePlace = [&] {
        return std::make_shared<FontPlace>(FontPlace{std::make_shared<ShapingFont>(face)});
    };
    FontPlace& place =
        *_fonts.getOrPut(bytes.get(), [&] { return decltype(_fonts)::DataNode(makePlace(), 0); }).getValue();
    if (place.font->hasManyPlans() || place.font->isSpoiled()) {
        place.font = std::make_shared<ShapingFont>(face);
    }
    return place.font;
}

std::shared_ptr<FallbackAnswers>
ShapingCaches::getFallbackAnswers(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, const TextStyle& style) {
    const auto found = std::find_if(_answers.begin(), _answers.end(),
                                    [&](const auto& answers) { return answers->areFor(*faceInfo, style); });
    if (found != _answers.end()) {
        return makeLatest(_answers, found);
    }
    if (_answers.size() == maxAnswers) {
        _answers.erase(_answers.begin());
    }
    return _answers.emplace_back(std::make_shared<FallbackAnswers>(faceInfo, style));
}

ShapePlan& ShapingCaches::getPlan(ShapingFont& font, const ShapePlanKey& key) {
    return font.getPlan(key, _lastPlanId);
}

FontEngine::CacheFigures ShapingCaches::getFigures() const {
    const std::lock_guard<std::mutex> lock(mutex);
    return words.getFigures();
}

void ShapingCaches::clear() {
    std::vector<std::shared_ptr<FallbackAnswers>> answers; // destroyed without the lock: see put()
    std::vector<std::shared_ptr<PreparedStyle>> styles;
    const std::lock_guard<std::mutex> lock(mutex);
    words.clear();
    _fonts.clear();
    answers.swap(_answers);
    styles.swap(_styles);
}

} // namespace Vell::TextLayout
