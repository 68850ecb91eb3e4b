#include <FontLoaders/Private/Coverage/CoverageAnswers.h>

namespace Vell::FontLoaders::Internal {

namespace {

/// What an answer takes beside its key: the entry, two descriptions and the name in each of them.
constexpr std::uint64_t bytesOfAnswer = 512;

void append(const void* bytes, std::size_t size, std::string& key) {
    key.append(static_cast<const char*>(bytes), size);
}

/// With its length before it, so that no two sequences of texts give the same key.
void append(const std::string& text, std::string& key) {
    const std::size_t length = text.size();
    append(&length, sizeof(length), key);
    key += text;
}

std::string makeKey(const CoverageRequest& request) {
    std::string key;
    key += request.face->isBold() ? 'b' : ' ';
    key += request.face->isItalic() ? 'i' : ' ';
    append(request.face->getName(), key);
    append(request.language, key);
    const std::size_t length = request.cluster.size();
    append(&length, sizeof(length), key);
    append(request.cluster.data(), length * sizeof(char32_t), key);
    for (const std::string& family : request.families) {
        append(family, key);
    }
    return key;
}

} // namespace

CoverageAnswers::Answer CoverageAnswers::get(const CoverageRequest& request, std::uint64_t version,
                                             const CallableRef<Answer()>& search) {
    if (request.cluster.size() > maxCodePoints) {
        return search();
    }
    const std::string key = makeKey(request);
    if (auto known = find(key, version)) {
        return *known;
    }
    Answer answer = search();
    remember(key, version, answer);
    return answer;
}

std::optional<CoverageAnswers::Answer> CoverageAnswers::find(const std::string& key, std::uint64_t version) {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (version != _version) {
        _answers.clear();
        _version = version;
    }
    const auto* const known = _answers.get(key);
    return known != nullptr ? std::make_optional(known->getValue()) : std::nullopt;
}

void CoverageAnswers::remember(const std::string& key, std::uint64_t version, const Answer& answer) {
    const std::lock_guard<std::mutex> lock(_mutex);
    if (version == _version) {
        _answers.put(key, MRUCacheNode<Answer>(answer, key.size() + bytesOfAnswer));
    }
}

} // namespace Vell::FontLoaders::Internal
