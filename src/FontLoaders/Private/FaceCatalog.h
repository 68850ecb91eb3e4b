#pragma once

#include <FontLoaders/Private/FontconfigHandles.h>
#include <FontLoaders/Private/StyleSelection.h>

#include <deque>
#include <map>
#include <string>

namespace Vell::FontLoaders::Internal {

/// The faces that fontconfig lists, by their family names in any language, whatever the case of the letters.
class FaceCatalog {
public:
    /// Reads the font lists of `config`, which must outlive the catalog.
    explicit FaceCatalog(FcConfig* config);
    FaceCatalog(const FaceCatalog&) = delete;
    FaceCatalog& operator=(const FaceCatalog&) = delete;

    /// The faces of a family; null when it is not installed.
    const Faces* find(const std::string& family) const;

    /// All fonts as fontconfig describes them, those included that are no face of the catalog.
    FcFontSet* getPatterns() const { return _patterns.get(); }

    /// Takes a face out of its families and of the patterns, as if it were not installed. The face itself
    /// stays valid; a family goes with its last face.
    void remove(const InstalledFace& face);

private:
    struct LessIgnoringCase {
        bool operator()(const std::string& lhs, const std::string& rhs) const;
    };

    void add(const FcFontSet* fonts);
    void add(InstalledFace face);
    void removeFromFamily(const std::string& family, const InstalledFace& face);

    FontconfigPtr<FcFontSet> _patterns;
    std::deque<InstalledFace> _faces; // where an element stays in place when others are added
    std::map<std::string, Faces, LessIgnoringCase> _families;
};

} // namespace Vell::FontLoaders::Internal
