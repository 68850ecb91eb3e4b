#include <FontLoaders/Public/VariationLoader.h>

#include <FontLoaders/Private/Variations/StyleSettings.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FontVariations.h>

#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontLoaders {

namespace {

constexpr std::uint64_t maxInstances = 64;
constexpr std::uint64_t maxInstanceBytes = std::uint64_t{64} << 20U;

using Style = Internal::RequestedStyle;

class PlainFaceInfo final : public Gfx::FontFaceInfo {
public:
    PlainFaceInfo(std::string family, const Style& style)
        : _family(std::move(family))
        , _style(style) {}

    std::string getName() const override { return _family; }
    bool isBold() const override { return _style.bold; }
    bool isItalic() const override { return _style.italic; }

private:
    std::string _family;
    Style _style;
};

/// A family's name with settings: the whole name, and where its colon is.
struct VariedName {
    std::string whole;
    std::size_t colon;

    std::string getFamily() const { return whole.substr(0, colon); }
    std::string getSettings() const { return whole.substr(colon + 1); }
};

std::optional<VariedName> findSettings(const std::string& name) {
    const std::size_t colon = name.rfind(':');
    if (colon == std::string::npos || name.find('=', colon) == std::string::npos) {
        return std::nullopt;
    }
    return VariedName{name, colon};
}

std::string makeKey(const std::string& name, const Style& style) {
    return name + '\0' + (style.bold ? 'b' : ' ') + (style.italic ? 'i' : ' ');
}

class VariationLoader final : public FontLoader {
public:
    explicit VariationLoader(NNPtr<const FontLoader> loader)
        : _loader(std::move(loader)) {}
    VariationLoader(const VariationLoader&) = delete;
    VariationLoader& operator=(const VariationLoader&) = delete;
    ~VariationLoader() override;

    FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    FontBytes loadDefaultFont(bool bold, bool italic) const override {
        return _loader->loadDefaultFont(bold, italic);
    }
    std::string getFamilyNameForRange(unsigned int rangeId) const override {
        return _loader->getFamilyNameForRange(rangeId);
    }

private:
    using Cache = MRUCache<std::string, FontBytes, std::hash<std::string>, std::equal_to<>>;

    FontBytes load(const std::string& family, const Style& style) const {
        return _loader->loadFont(makeNNPtr<const PlainFaceInfo>(family, style));
    }
    bool hasFamily(const std::string& name) const;
    FontBytes makeInstance(const VariedName& name, const Style& wanted) const;
    FontBytes findKept(const std::string& key) const;
    void keep(const std::string& key, const FontBytes& instance) const;

    const NNPtr<const FontLoader> _loader;
    mutable std::mutex _making;
    mutable std::mutex _cacheMutex; // guards the cache; locked after _making
    mutable Cache _instances{maxInstances, maxInstanceBytes};
};

VariationLoader::~VariationLoader() = default;

FontBytes VariationLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    const std::optional<VariedName> name = findSettings(faceInfo->getName());
    if (!name) {
        return _loader->loadFont(faceInfo);
    }
    const Style style{faceInfo->isBold(), faceInfo->isItalic()};
    const std::string key = makeKey(name->whole, style);
    if (FontBytes kept = findKept(key)) {
        return kept;
    }
    const std::lock_guard<std::mutex> lock(_making);
    if (FontBytes kept = findKept(key)) {
        return kept;
    }
    if (hasFamily(name->whole)) {
        return _loader->loadFont(faceInfo);
    }
    FontBytes instance = makeInstance(*name, style);
    if (instance) {
        keep(key, instance);
    }
    return instance;
}

bool VariationLoader::hasFamily(const std::string& name) const {
    for (const Style& style : {Style{false, false}, {true, false}, {false, true}, {true, true}}) {
        if (load(name, style)) {
            return true;
        }
    }
    return false;
}

/// An instance of the first face whose axes give what it lacks of the style. If the family has no axes at
/// all, its first face reports that.
FontBytes VariationLoader::makeInstance(const VariedName& name, const Style& wanted) const {
    const std::vector<AxisSetting> settings = parseVariations(name.getSettings());
    FontBytes staticFace;
    bool hasAxes = false;
    for (const Style& style : Internal::listServingStyles(wanted)) {
        const FontBytes face = load(name.getFamily(), style);
        if (!face) {
            continue;
        }
        const std::vector<FontAxis> axes = readVariations(face).axes;
        hasAxes = hasAxes || !axes.empty();
        staticFace = axes.empty() && !staticFace ? face : staticFace;
        const Internal::MissingStyle missing{wanted.bold && !style.bold, wanted.italic && !style.italic};
        const auto complete = Internal::addStyle(axes, settings, missing);
        if (!axes.empty() && complete) {
            return makeFontInstance(face, *complete);
        }
    }
    return staticFace && !hasAxes ? makeFontInstance(staticFace, settings) : nullptr;
}

FontBytes VariationLoader::findKept(const std::string& key) const {
    const std::lock_guard<std::mutex> lock(_cacheMutex);
    const auto* const node = _instances.get(key);
    return node == nullptr ? nullptr : node->getValue();
}

void VariationLoader::keep(const std::string& key, const FontBytes& instance) const {
    const std::lock_guard<std::mutex> lock(_cacheMutex);
    _instances.put(key, {instance, instance->size()});
}

} // namespace

NNPtr<FontLoader> createVariationLoader(NNPtr<const FontLoader> loader) {
    return makeNNPtr<VariationLoader>(std::move(loader));
}

} // namespace Vell::FontLoaders
