#pragma once

#include <FontLoaders/Private/Installed/Fontconfig.h>
#include <FontLoaders/Private/Installed/InstalledFace.h>
#include <FontLoaders/Private/Installed/NamedInstances.h>

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// The faces of one family.
using Faces = std::vector<const InstalledFace*>;

/// The face that has exactly this style, or null. If several have it, the weight nearest to regular (or to
/// bold) decides, then the width nearest to normal, then the path, then the index.
const InstalledFace* selectFace(const Faces& faces, bool bold, bool italic);

/// The face for text of no particular style: the regular one, or else the nearest. Null only if there are no
/// faces.
const InstalledFace* selectPlainFace(const Faces& faces);

/// The faces that fontconfig lists, by family name. A family is found by its name in any language, in upper
/// or lower case.
class FaceCatalog {
public:
    /// Reads the font lists of `config`, which must outlive the catalog.
    explicit FaceCatalog(FcConfig* config);
    FaceCatalog(const FaceCatalog&) = delete;
    FaceCatalog& operator=(const FaceCatalog&) = delete;

    /// The faces of a family. Null if it is not installed.
    const Faces* find(const std::string& family) const;

    /// The instance of a variable font that the name of a family and of a style of it means. Null if there is
    /// none.
    const InstancePlace* findInstance(const std::string& name) const { return _instances.find(name); }

    /// All fonts that fontconfig lists, including those that are not in the catalog.
    FcFontSet* getPatterns() const { return _patterns.get(); }

    /// Removes a face from its families and from the patterns, as if it were not installed. A family is
    /// removed with its last face. References to the face stay valid.
    void remove(const InstalledFace& face);

private:
    struct LessIgnoringCase {
        bool operator()(const std::string& lhs, const std::string& rhs) const;
    };

    void add(const FcFontSet* fonts);
    void add(InstalledFace face);
    void addInstances();
    void removeFromFamily(const std::string& family, const InstalledFace& face);

    FontconfigPtr<FcFontSet> _patterns;
    std::deque<InstalledFace> _faces; // a deque, so that faces stay in place when others are added
    std::map<std::string, Faces, LessIgnoringCase> _families;
    NamedInstances _instances;
};

} // namespace Vell::FontLoaders::Internal
