#include <TextLayout/Private/FallbackAnswers.h>

#include <utility>

namespace Vell::TextLayout {

std::optional<FallbackFace> FallbackAnswers::findKnown(char32_t character) {
    const std::lock_guard<std::mutex> lock(_mutex);
    const auto found = _answers.find(character);
    return found != _answers.end() ? std::make_optional(found->second) : std::nullopt;
}

FallbackFace FallbackAnswers::remember(char32_t character, FallbackFace answer) {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_answers.size() == maxCharacters) {
        _answers.clear();
    }
    return _answers.try_emplace(character, std::move(answer)).first->second;
}

} // namespace Vell::TextLayout
