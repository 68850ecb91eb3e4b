#include <TextLayout/Private/ShapingCaches.h>

#include <algorithm>

namespace Vell::TextLayout {

std::shared_ptr<ShapingFont> ShapingCaches::getFont(const FontEngine::FontFace& face) {
    const NNPtr<const Bytes> bytes = face.getFaceData().bytes;
    const std::lock_guard<std::mutex> lock(mutex);
    const auto makePlace = [&] {
        return std::make_shared<FontPlace>(FontPlace{std::make_shared<ShapingFont>(face)});
    };
    FontPlace& place =
        *_fonts.getOrPut(bytes.get(), [&] { return decltype(_fonts)::DataNode(makePlace(), 0); }).getValue();
    if (place.font->hasManyPlans()) {
        place.font = std::make_shared<ShapingFont>(face);
    }
    return place.font;
}

std::shared_ptr<FallbackAnswers>
ShapingCaches::getFallbackAnswers(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, const TextStyle& style) {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = std::find_if(_answers.begin(), _answers.end(),
                                    [&](const auto& answers) { return answers->areFor(*faceInfo, style); });
    if (found != _answers.end()) {
        std::rotate(found, found + 1, _answers.end());
        return _answers.back();
    }
    if (_answers.size() == maxAnswers) {
        _answers.erase(_answers.begin());
    }
    return _answers.emplace_back(std::make_shared<FallbackAnswers>(faceInfo, style));
}

ShapePlan& ShapingCaches::getPlan(ShapingFont& font, const ShapePlanKey& key) {
    const std::lock_guard<std::mutex> lock(mutex);
    return font.getPlan(key, _lastPlanId);
}

FontEngine::CacheFigures ShapingCaches::getFigures() const {
    const std::lock_guard<std::mutex> lock(mutex);
    return words.getFigures();
}

void ShapingCaches::clear() {
    const std::lock_guard<std::mutex> lock(mutex);
    words.clear();
    _fonts.clear();
    _answers.clear();
}

} // namespace Vell::TextLayout
