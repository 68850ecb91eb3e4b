#include <support/CountingLoader.h>

#include <support/InjectedError.h>

#include <algorithm>
#include <utility>

namespace Vell::Testing {

namespace {

bool startsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

const char* getStyleName(bool bold, bool italic) {
    if (bold) {
        return italic ? "bold italic" : "bold";
    }
    return italic ? "italic" : "regular";
}

template <class Map, class Key>
typename Map::mapped_type find(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found != map.end() ? found->second : typename Map::mapped_type();
}

} // namespace

CountingLoader::~CountingLoader() = default;

void CountingLoader::setFont(const std::string& name, bool bold, bool italic, Bytes bytes) {
    setFont(name, bold, italic, std::make_shared<const Bytes>(std::move(bytes)));
}

void CountingLoader::setFont(const std::string& name, bool bold, bool italic, FontBytes bytes) {
    _fonts[{name, bold, italic}] = std::move(bytes);
}

void CountingLoader::setDefaultFont(bool bold, bool italic, Bytes bytes) {
    setDefaultFont(bold, italic, std::make_shared<const Bytes>(std::move(bytes)));
}

void CountingLoader::setDefaultFont(bool bold, bool italic, FontBytes bytes) {
    _defaultFonts[{bold, italic}] = std::move(bytes);
}

void CountingLoader::setRangeFamily(unsigned int rangeId, std::string family) {
    _rangeFamilies[rangeId] = std::move(family);
}

void CountingLoader::throwFrom(std::string prefix) {
    _throwingPrefix = std::move(prefix);
}

std::vector<std::string> CountingLoader::getCalls() const {
    const std::lock_guard<std::mutex> lock(_mutex);
    return _calls;
}

std::size_t CountingLoader::countCalls(const std::string& prefix) const {
    const std::vector<std::string> calls = getCalls();
    return static_cast<std::size_t>(std::count_if(
        calls.begin(), calls.end(), [&](const std::string& call) { return startsWith(call, prefix); }));
}

void CountingLoader::clearCalls() {
    const std::lock_guard<std::mutex> lock(_mutex);
    _calls.clear();
}

void CountingLoader::record(std::string call) const {
    const bool isThrowing = !_throwingPrefix.empty() && startsWith(call, _throwingPrefix);
    const std::lock_guard<std::mutex> lock(_mutex);
    _calls.push_back(std::move(call));
    if (isThrowing) {
        throw InjectedError();
    }
}

std::shared_ptr<const Bytes> CountingLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    const std::string name = faceInfo->getName();
    const bool bold = faceInfo->isBold();
    const bool italic = faceInfo->isItalic();
    record("loadFont \"" + name + "\" " + getStyleName(bold, italic));
    return find(_fonts, std::make_tuple(name, bold, italic));
}

std::shared_ptr<const Bytes> CountingLoader::loadDefaultFont(bool bold, bool italic) const {
    record(std::string("loadDefaultFont ") + getStyleName(bold, italic));
    return find(_defaultFonts, std::make_tuple(bold, italic));
}

std::string CountingLoader::getFamilyNameForRange(unsigned int rangeId) const {
    record("getFamilyNameForRange " + std::to_string(rangeId));
    return find(_rangeFamilies, rangeId);
}

} // namespace Vell::Testing
