#include <TextLayout/Private/ShapingCaches.h>

namespace Vell::TextLayout {

std::shared_ptr<ShapingFont> ShapingCaches::getFont(const FontEngine::FontFace& face) {
    const FontEngine::FaceData data = face.getFaceData();
    const std::lock_guard<std::mutex> lock(mutex);
    return _fonts
        .getOrPut(data.bytes.get(),
                  [&] { return decltype(_fonts)::DataNode(std::make_shared<ShapingFont>(data), 0); })
        .getValue();
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
}

} // namespace Vell::TextLayout
