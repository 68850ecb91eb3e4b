#include <FontLoaders/Private/FaceCatalog.h>

#include <FontLoaders/Private/FontconfigHandles.h>

#include <utility>

namespace Vell::FontLoaders::Internal {

bool FaceCatalog::LessIgnoringCase::operator()(const std::string& lhs, const std::string& rhs) const {
    return FcStrCmpIgnoreCase(toFontconfig(lhs), toFontconfig(rhs)) < 0;
}

FaceCatalog::FaceCatalog(FcConfig* config) {
    add(FcConfigGetFonts(config, FcSetSystem));
    add(FcConfigGetFonts(config, FcSetApplication));
}

const Faces* FaceCatalog::find(const std::string& family) const {
    const auto found = _families.find(family);
    return found == _families.end() ? nullptr : &found->second;
}

void FaceCatalog::add(const FcFontSet* fonts) {
    for (int i = 0; fonts != nullptr && i < fonts->nfont; ++i) {
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
