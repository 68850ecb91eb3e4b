#include <FontLoaders/Public/VariationLoader.h>

#include <FontLoaders/Private/Installed/PlatformFonts.h>
#include <FontLoaders/Private/PlainFaceInfo.h>
#include <FontLoaders/Private/Variations/StyleSettings.h>
#include <FontLoaders/Private/Variations/VariationSources.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FontVariations.h>

#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Vtable.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
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

/// Bytes that keep the variable font alive from which they were made, so that it is not read again.
struct HeldInstance {
    FontBytes bytes;
    FontBytes source;
};

struct Origin {
    std::weak_ptr<const std::vector<unsigned char>> instance;
    std::weak_ptr<const std::vector<unsigned char>> source;
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

    const FontLoader& getLoader() const { return *_loader; }
    FontBytes findVariableFont(const FontBytes& bytes) const;

private:
    using Cache = MRUCache<std::string, FontBytes, std::hash<std::string>, std::equal_to<>>;

    FontBytes load(const std::string& family, const Style& style) const {
        return _loader->loadFont(makeNNPtr<const Internal::PlainFaceInfo>(family, style.bold, style.italic));
    }
    bool hasFamily(const std::string& name) const;
    FontBytes findFace(const std::string& family, const Style& style,
                       const std::vector<AxisSetting>& settings) const;
    HeldInstance makeInstance(const VariedName& name, const Style& wanted) const;
    FontBytes findKept(const std::string& key) const;
    void keep(const std::string& key, const FontBytes& instance, const FontBytes& source) const;

    const NNPtr<const FontLoader> _loader;
    mutable std::mutex _making;
    mutable std::mutex _cacheMutex; // guards the cache and the origins; locked after _making
    mutable Cache _instances{maxInstances, maxInstanceBytes};
    mutable std::vector<Origin> _origins; // of the instances that somebody holds, and of a few more
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
    HeldInstance made = makeInstance(*name, style);
    if (!made.bytes) {
        return nullptr;
    }
    const auto held = std::make_shared<const HeldInstance>(std::move(made));
    FontBytes instance(held, held->bytes.get());
    keep(key, instance, held->source);
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

/// The family's face of a style. If another installed face of the style has more of the axes, that one.
FontBytes VariationLoader::findFace(const std::string& family, const Style& style,
                                    const std::vector<AxisSetting>& settings) const {
    FontBytes face = load(family, style);
    const std::size_t count = face ? Internal::countAxes(face, settings) : settings.size();
    const auto installed = count < settings.size() ? Internal::findPlatformFonts(*_loader) : nullptr;
    if (!installed) {
        return face;
    }
    FontBytes other = installed->ask(
        [&](Internal::InstalledFonts& fonts) { return fonts.loadVariable(family, style, settings); });
    return other && Internal::countAxes(other, settings) > count ? other : face;
}

/// An instance of the first face whose axes give what it lacks of the style. If no face has the axes of the
/// settings, a variable one reports that, or else a static one.
HeldInstance VariationLoader::makeInstance(const VariedName& name, const Style& wanted) const {
    const std::vector<AxisSetting> settings = parseVariations(name.getSettings());
    FontBytes lacking;
    bool isFound = false;
    for (const Style& style : Internal::listServingStyles(wanted)) {
        const FontBytes face = findFace(name.getFamily(), style, settings);
        if (!face) {
            continue;
        }
        const std::vector<FontAxis> axes = readVariations(face).axes;
        const Internal::MissingStyle missing{wanted.bold && !style.bold, wanted.italic && !style.italic};
        if (axes.empty() || Internal::countAxes(face, settings) < settings.size()) {
            const bool isBetter = !lacking || (readVariations(lacking).axes.empty() && !axes.empty());
            lacking = isBetter ? face : lacking;
        } else if (const auto complete = Internal::addStyle(axes, settings, missing)) {
            return {makeFontInstance(face, *complete), face};
        } else {
            isFound = true;
        }
    }
    return lacking && !isFound ? HeldInstance{makeFontInstance(lacking, settings), lacking} : HeldInstance();
}

FontBytes VariationLoader::findKept(const std::string& key) const {
    const std::lock_guard<std::mutex> lock(_cacheMutex);
    const auto* const node = _instances.get(key);
    return node == nullptr ? nullptr : node->getValue();
}

void VariationLoader::keep(const std::string& key, const FontBytes& instance, const FontBytes& source) const {
    const std::lock_guard<std::mutex> lock(_cacheMutex);
    const auto isGone = [](const Origin& origin) { return origin.instance.expired(); };
    _origins.erase(std::remove_if(_origins.begin(), _origins.end(), isGone), _origins.end());
    _origins.push_back({instance, source});
    _instances.put(key, {instance, instance->size()});
}

FontBytes VariationLoader::findVariableFont(const FontBytes& bytes) const {
    const std::lock_guard<std::mutex> lock(_cacheMutex);
    const auto found = std::find_if(_origins.begin(), _origins.end(), [&bytes](const Origin& origin) {
        return bytes && origin.instance.lock() == bytes;
    });
    return found == _origins.end() ? bytes : found->source.lock();
}

/// Distinguishes these loaders from all others. Null until the first one is made.
std::atomic<const void*> variationLoaderVtable = nullptr;

} // namespace

NNPtr<FontLoader> createVariationLoader(NNPtr<const FontLoader> loader) {
    auto made = makeNNPtr<VariationLoader>(std::move(loader));
    variationLoaderVtable = getVtable(*made);
    return made;
}

namespace Internal {

const FontLoader* findLoaderBehind(const FontLoader& loader) {
    const bool isVariationLoader = getVtable(loader) == variationLoaderVtable;
    return isVariationLoader ? &static_cast<const VariationLoader&>(loader).getLoader() : nullptr;
}

FontBytes findVariableFont(const FontLoader& loader, const FontBytes& bytes) {
    return static_cast<const VariationLoader&>(loader).findVariableFont(bytes);
}

} // namespace Internal

} // namespace Vell::FontLoaders
