#include <FontLoaders/Private/FaceCatalog.h>

#include <algorithm>
#include <new>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

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

bool FaceCatalog::LessIgnoringCase::operator()(const std::string& lhs, const std::string& rhs) const {
    return FcStrCmpIgnoreCase(toFontconfig(lhs), toFontconfig(rhs)) < 0;
}

FaceCatalog::FaceCatalog(FcConfig* config)
    : _patterns(makeFontSet()) {
    add(FcConfigGetFonts(config, FcSetSystem));
    add(FcConfigGetFonts(config, FcSetApplication));
}

const Faces* FaceCatalog::find(const std::string& family) const {
    const auto found = _families.find(family);
    return found == _families.end() ? nullptr : &found->second;
}

void FaceCatalog::remove(const InstalledFace& face) {
    FontconfigPtr<FcFontSet> others = makeFontSet();
    for (int i = 0; i < _patterns->nfont; ++i) {
        if (!isOfFace(_patterns->fonts[i], face)) {
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
        return; // two of the names differ in case only
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

void FaceCatalog::add(InstalledFace face) {
    const InstalledFace& added = _faces.emplace_back(std::move(face));
    for (const std::string& family : added.families) {
        _families[family].push_back(&added);
    }
}

} // namespace Vell::FontLoaders::Internal
