#pragma once

#include <FontLoaders/Private/FaceCatalog.h>
#include <FontLoaders/Private/FontconfigHandles.h>
#include <FontLoaders/Private/RangeFamilies.h>

#include <optional>
#include <string>

namespace Vell::FontLoaders::Internal {

/// The fonts of this machine as they were when this was made. Has a configuration of fontconfig to itself and
/// leaves the one that the rest of the process uses alone. Not safe for several threads at once.
class InstalledFonts {
public:
    explicit InstalledFonts(std::string defaultFaceName);

    /// The faces that a name stands for: those of the family itself, of the family that serves a generic
    /// name, or of one that the configuration binds to it as the same. Null when there is none.
    const Faces* find(const std::string& name) const;

    /// The faces of the default family, or of fontconfig's best match for it; null when there are no fonts.
    const Faces* findDefault() const;

    std::string getFamilyForRange(unsigned int rangeId);

private:
    const Faces* findSame(const std::string& name) const;

    std::string _defaultFaceName;
    FontconfigPtr<FcConfig> _config;
    FaceCatalog _catalog;
    std::optional<RangeFamilies>
        _ranges; // sorting all fonts takes a while, so the first range asked for does it
};

} // namespace Vell::FontLoaders::Internal
