#pragma once

#include <FontLoaders/Private/FaceCatalog.h>
#include <FontLoaders/Private/FontFileCache.h>
#include <FontLoaders/Private/FontconfigHandles.h>
#include <FontLoaders/Private/RangeFamilies.h>
#include <FontLoaders/Public/FontBytes.h>
#include <Utils/Public/CallableRef.h>

#include <optional>
#include <string>
#include <unordered_map>

namespace Vell::FontLoaders::Internal {

/// The fonts of this machine as they were when this was made. Has a configuration of fontconfig to itself and
/// leaves the one that the rest of the process uses alone. Not safe for several threads at once.
///
/// A face without a usable charmap is not installed, whatever fontconfig lists. That shows when its file is
/// read; the face then goes, and the question is answered anew without it.
class InstalledFonts {
public:
    /// `files` must outlive this.
    InstalledFonts(std::string defaultFaceName, FontFileCache& files);

    /// The face of exactly this style of what a name stands for: of the family itself, of the family that
    /// serves a generic name, or of one that the configuration binds to it as the same. Null when there is
    /// none.
    FontBytes load(const std::string& name, bool bold, bool italic);

    /// The face of the default family, or of fontconfig's best match for it: in exactly this style, or in the
    /// nearest one for the plain request, which is null only where there are no fonts.
    FontBytes loadDefault(bool bold, bool italic);

    std::string getFamilyForRange(unsigned int rangeId);

private:
    using FindFaces = CallableRef<const Faces*()>;
    using SelectFace = CallableRef<const InstalledFace*(const Faces&)>;

    const Faces* find(const std::string& name) const;
    const Faces* findSame(const std::string& name) const;
    const Faces* findBestMatch(const std::string& name) const;
    const Faces* findDefault() const;

    FontBytes loadFirst(FindFaces findFaces, SelectFace select);
    FontBytes loadOrRemove(const InstalledFace& face);
    bool confirm(const Faces& faces);
    bool confirm(const InstalledFace& face);
    std::string findFamilyForRange(unsigned int rangeId);

    std::string _defaultFaceName;
    FontFileCache& _files;
    FontconfigPtr<FcConfig> _config;
    FaceCatalog _catalog;
    std::optional<RangeFamilies>
        _ranges; // sorting all fonts takes a while, so the first range asked for does it
    std::unordered_map<unsigned int, std::string> _familiesForRanges;

    /// What was last read only to look for a charmap. Kept until a font is loaded: most often that is this
    /// one, and a face of a large collection takes long to read.
    FontBytes _confirmed;
};

} // namespace Vell::FontLoaders::Internal
