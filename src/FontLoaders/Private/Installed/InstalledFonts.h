#pragma once

#include <FontLoaders/Private/Coverage/CoverageSearch.h>
#include <FontLoaders/Private/Coverage/FamilyOrder.h>
#include <FontLoaders/Private/Installed/FaceCatalog.h>
#include <FontLoaders/Private/Installed/FontFileCache.h>
#include <FontLoaders/Private/Installed/Fontconfig.h>
#include <FontLoaders/Private/Installed/RangeFamilies.h>
#include <FontLoaders/Private/Variations/StyleSettings.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/CallableRef.h>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// The fonts that were installed on this machine when this object was made. It has its own fontconfig
/// configuration and does not touch the one that the rest of the process uses. Not thread-safe.
///
/// A face without a usable charmap does not count as installed, even if fontconfig lists it. That becomes
/// known when its file is read. The face is then removed, and the request is answered without it.
class InstalledFonts {
public:
    /// `files` must outlive this object.
    InstalledFonts(std::string defaultFaceName, FontFileCache& files);

    /// The face of exactly this style in the family that a name means: the family of that name, the family
    /// that serves a generic name, or a family that the configuration binds to the name as the same. Null if
    /// there is none.
    FontBytes load(const std::string& name, bool bold, bool italic);

    /// The variable face of this style that has the axes of most settings, the first by path among equals.
    /// Null if none has any.
    FontBytes loadVariable(const std::string& name, const RequestedStyle& style,
                           const std::vector<AxisSetting>& settings);

    /// A face of the default family, or of fontconfig's best match for it. The plain request takes the
    /// nearest style and is null only if there are no fonts. Any other request takes exactly this style.
    FontBytes loadDefault(bool bold, bool italic);

    std::string getFamilyForRange(unsigned int rangeId);

    /// The face that covers a cluster, which load serves. Empty if there is none.
    std::optional<CoveringFamily> findCovering(const CoverageQuery& query);

    /// How many faces have been removed since this object was made. Answers given before the last one may
    /// name a face that does not count as installed any more.
    std::uint64_t getRemovalCount() const { return _removalCount; }

private:
    using FindFaces = CallableRef<const Faces*()>;
    using SelectFace = CallableRef<const InstalledFace*(const Faces&)>;

    const Faces* find(const std::string& name) const;
    const Faces* findSameFamily(const std::string& name) const;
    const Faces* findBestMatch(const std::string& name) const;
    const Faces* findDefault() const;

    FontBytes loadFirst(FindFaces findFaces, SelectFace select);
    FontBytes loadOrRemove(const InstalledFace& face);
    FontBytes loadNamedInstance(const std::string& name, bool bold, bool italic);
    FontBytes loadVariedStyle(const Faces* faces, bool bold, bool italic);
    bool confirmOrRemove(const Faces& faces);
    bool confirmOrRemove(const InstalledFace& face);
    std::string findFamilyForRange(unsigned int rangeId);
    void addFamily(const std::string& name, const FaceStyle& style,
                   std::vector<StyledFamily>& families) const;
    std::vector<StyledFamily> listPreferred(const CoverageQuery& query) const;
    std::optional<CoveringFamily> findCandidate(const CoverageQuery& query);
    bool isServable(const InstalledFace& face);

    std::string _defaultFaceName;
    FontFileCache& _files;
    FontconfigPtr<FcConfig> _config;
    FaceCatalog _catalog;
    std::optional<RangeFamilies> _ranges; // made on first use, because sorting all fonts takes a while
    std::unordered_map<unsigned int, std::string> _familiesForRanges;
    std::optional<FamilyOrders> _orders;        // made on first use
    std::set<const InstalledFace*> _unservable; // found while looking for a face that covers a cluster
    std::uint64_t _removalCount = 0;

    /// The face that was last read only to look for a charmap. It is kept until a font is loaded: usually
    /// that is this one, and reading a face of a large collection takes long.
    FontBytes _confirmed;
};

} // namespace Vell::FontLoaders::Internal
