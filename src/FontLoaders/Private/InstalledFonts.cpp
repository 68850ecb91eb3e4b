#include <FontLoaders/Private/InstalledFonts.h>

#include <FontLoaders/Private/FamilyQueries.h>

#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

/// A configuration that cannot be loaded is one without fonts.
FontconfigPtr<FcConfig> loadConfig() {
    FontconfigPtr<FcConfig> config(FcInitLoadConfigAndFonts());
    return config ? std::move(config) : FontconfigPtr<FcConfig>(FcConfigCreate());
}

} // namespace

InstalledFonts::InstalledFonts(std::string defaultFaceName)
    : _defaultFaceName(std::move(defaultFaceName))
    , _config(loadConfig())
    , _catalog(_config.get()) {}

const Faces* InstalledFonts::find(const std::string& name) const {
    // For fontconfig a string ends at its first zero byte, and what stands before it is another name.
    if (name.find('\0') != std::string::npos) {
        return nullptr;
    }
    if (const Faces* faces = _catalog.find(name)) {
        return faces;
    }
    if (isGenericFamily(name)) {
        return _catalog.find(getBestMatchingFamily(_config.get(), name));
    }
    return findSame(name);
}

const Faces* InstalledFonts::findSame(const std::string& name) const {
    for (const std::string& same : getSameFamilies(_config.get(), name)) {
        if (const Faces* faces = _catalog.find(same)) {
            return faces;
        }
    }
    return nullptr;
}

const Faces* InstalledFonts::findDefault() const {
    const Faces* faces = find(_defaultFaceName);
    return faces != nullptr ? faces : _catalog.find(getBestMatchingFamily(_config.get(), _defaultFaceName));
}

std::string InstalledFonts::getFamilyForRange(unsigned int rangeId) {
    if (!_ranges) {
        _ranges.emplace(_config.get(), _catalog, _defaultFaceName);
    }
    return _ranges->get(rangeId);
}

} // namespace Vell::FontLoaders::Internal
