#include "fonts/RecordingFontLoader.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace Vell::Tool {

namespace {

struct IsSameQuestion {
    bool operator()(const FontQuestion& a, const FontQuestion& b) const {
        return std::tie(a.family, a.isBold, a.isItalic) == std::tie(b.family, b.isBold, b.isItalic);
    }
    bool operator()(const RangeQuestion& a, const RangeQuestion& b) const { return a.rangeId == b.rangeId; }
    bool operator()(const FontQuestion&, const RangeQuestion&) const { return false; }
    bool operator()(const RangeQuestion&, const FontQuestion&) const { return false; }
};

} // namespace

RecordingFontLoader::RecordingFontLoader(LoaderPtr loader)
    : _loader(std::move(loader)) {}

FontBytes RecordingFontLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    FontBytes bytes = _loader->loadFont(faceInfo);
    record(FontQuestion{faceInfo->getName(), faceInfo->isBold(), faceInfo->isItalic(), bytes});
    return bytes;
}

FontBytes RecordingFontLoader::loadDefaultFont(bool bold, bool italic) const {
    FontBytes bytes = _loader->loadDefaultFont(bold, italic);
    record(FontQuestion{std::nullopt, bold, italic, bytes});
    return bytes;
}

std::string RecordingFontLoader::getFamilyNameForRange(unsigned int rangeId) const {
    std::string family = _loader->getFamilyNameForRange(rangeId);
    record(RangeQuestion{rangeId, family});
    return family;
}

std::vector<LoaderQuestion> RecordingFontLoader::getQuestions() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _questions;
}

void RecordingFontLoader::record(LoaderQuestion question) const {
    const std::lock_guard<std::mutex> lock(_mutex);
    const bool isKnown =
        std::any_of(_questions.begin(), _questions.end(), [&question](const LoaderQuestion& other) {
            return std::visit(IsSameQuestion{}, question, other);
        });
    if (!isKnown) {
        _questions.push_back(std::move(question));
    }
}

} // namespace Vell::Tool
