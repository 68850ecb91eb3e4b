#include "fonts/RecordingCoverage.h"

namespace Vell::Tool {

RecordingCoverage::Answer RecordingCoverage::findFace(const FontLoaders::CoverageRequest& request) const {
    Answer answer = _fallback ? _fallback->findFace(request) : std::nullopt;
    const std::lock_guard<std::mutex> lock(_mutex);
    _answers.emplace(request.cluster, answer);
    return answer;
}

const RecordingCoverage::Answer* RecordingCoverage::findAnswer(const std::u32string& cluster) const {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _answers.find(cluster);
    return found != _answers.end() ? &found->second : nullptr;
}

} // namespace Vell::Tool
