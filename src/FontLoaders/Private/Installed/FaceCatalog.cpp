#include <FontLoaders/Private/Installed/FaceCatalog.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <new>
#include <set>
#include <string>
#include <tuple>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

struct Style {
    bool bold;
    bool italic;
};

/// From plain to the style that is least like it.
constexpr Style stylesFromPlain[] = {{false, false}, {true, false}, {false, true}, {true, true}};

bool isNearer(const InstalledFace& lhs, const InstalledFace& rhs, double weight) {
    const auto getDistance = [weight](const InstalledFace& face) {
        return std::make_tuple(std::abs(face.weight - weight), std::abs(face.width - FC_WIDTH_NORMAL),
                               std::cref(face.file), face.index);
    };
    return getDistance(lhs) < getDistance(rhs);
}

FontconfigPtr<FcFontSet> makeFontSet() {
    FontconfigPtr<FcFontSet> fonts(FcFontSetCreate());
    return fonts ? std::move(fonts) : throw std::bad_alloc();
}

void addReference(FcFontSet* fonts, FcPattern* pattern) {
    FcPatternReference(pattern);
    if (FcFontSetAdd(fonts, pattern) == FcFalse) {
        FcPatternDestroy(pattern);
        throw std::bad_alloc();
    }
}

} // namespace

const InstalledFace* selectFace(const Faces& faces, bool bold, bool italic) {
    const double weight = bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR;
    const InstalledFace* nearest = nullptr;
    for (const InstalledFace* face : faces) {
        const bool hasStyle = face->isBold() == bold && face->isItalic() == italic;
        if (hasStyle && (nearest == nullptr || isNearer(*face, *nearest, weight))) {
            nearest = face;
        }
    }
    return nearest;
}

const InstalledFace* selectPlainFace(const Faces& faces) {
    for (const Style& style : stylesFromPlain) {
        if (const InstalledFace* face = selectFace(faces, style.bold, style.italic)) {
            return face;
        }
    }
    return nullptr;
}

bool FaceCatalog::LessIgnoringCase::operator()(const std::string& lhs, const std::string& rhs) const {
    return FcStrCmpIgnoreCase(toFontconfig(lhs), toFontconfig(rhs)) < 0;
}

FaceCatalog::FaceCatalog(FcConfig* config)
    : _patterns(makeFontSet()) {
    add(FcConfigGetFonts(config, FcSetSystem));
    add(FcConfigGetFonts(config, FcSetApplication));
    addInstances();
}

const Faces* FaceCatalog::find(const std::string& family) const {
    const auto found = _families.find(family);
    return found == _families.end() ? nullptr : &found->second;
}

void FaceCatalog::remove(const InstalledFace& face) {
    FontconfigPtr<FcFontSet> others = makeFontSet();
    for (int i = 0; i < _patterns->nfont; ++i) {
        if (!describesFace(_patterns->fonts[i], face)) {
            addReference(others.get(), _patterns->fonts[i]);
        }
    }
    _patterns = std::move(others);
    for (const std::string& family : face.families) {
        removeFromFamily(family, face);
    }
}

void FaceCatalog::removeFromFamily(const std::string& family, const InstalledFace& face) {
    const auto found = _families.find(family);
    if (found == _families.end()) {
        return; // already removed under a name that differs only in case
    }
    Faces& faces = found->second;
    faces.erase(std::remove(faces.begin(), faces.end(), &face), faces.end());
    if (faces.empty()) {
        _families.erase(found);
    }
}

void FaceCatalog::add(const FcFontSet* fonts) {
    for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
        addReference(_patterns.get(), fonts->fonts[i]);
        if (auto face = tryReadFace(fonts->fonts[i])) {
            add(std::move(*face));
        }
    }
}

/// Only after all patterns have been read is it known which faces have axes.
void FaceCatalog::addInstances() {
    std::set<std::pair<std::string, unsigned int>> variable;
    for (int i = 0; i < _patterns->nfont; ++i) {
        if (describesAxes(_patterns->fonts[i])) {
            variable.insert(getPlace(_patterns->fonts[i]));
        }
    }
    for (InstalledFace& face : _faces) {
        face.isVariable = variable.count({face.file, face.index}) != 0;
    }
    for (int i = 0; i < _patterns->nfont; ++i) {
        if (variable.count(getPlace(_patterns->fonts[i])) != 0) {
            _instances.add(_patterns->fonts[i]);
        }
    }
}

void FaceCatalog::add(InstalledFace face) {
    const InstalledFace& added = _faces.emplace_back(std::move(face));
    for (const std::string& family : added.families) {
        _families[family].push_back(&added);
    }
}

} // namespace Vell::FontLoaders::Internal
