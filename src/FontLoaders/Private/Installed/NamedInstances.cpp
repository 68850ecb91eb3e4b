#include <FontLoaders/Private/Installed/NamedInstances.h>

#include <FontLoaders/Private/Installed/Fontconfig.h>
#include <FontLoaders/Private/Installed/InstalledFace.h>

#include <algorithm>
#include <memory>
#include <new>
#include <tuple>

namespace Vell::FontLoaders::Internal {

namespace {

struct Free {
    void operator()(FcChar8* text) const { FcStrFree(text); }
};

std::string makeKey(std::string name) {
    name.erase(std::remove(name.begin(), name.end(), ' '), name.end());
    const std::unique_ptr<FcChar8, Free> lower(FcStrDowncase(toFontconfig(name)));
    return lower ? fromFontconfig(lower.get()) : throw std::bad_alloc();
}

bool isBefore(const InstancePlace& lhs, const InstancePlace& rhs) {
    return std::tie(lhs.file, lhs.index, lhs.instance) < std::tie(rhs.file, rhs.index, rhs.instance);
}

} // namespace

void NamedInstances::add(const FcPattern* pattern) {
    const auto listed = tryReadInstance(pattern);
    if (!listed) {
        return;
    }
    const InstalledFace& face = listed->face;
    const InstancePlace place{face.file, face.index, listed->instance, face.isBold(), face.isItalic()};
    for (const std::string& family : face.families) {
        for (const std::string& style : listed->styles) {
            const auto [kept, isNew] = _places.try_emplace(makeKey(family + style), place);
            if (!isNew && isBefore(place, kept->second)) {
                kept->second = place;
            }
        }
    }
}

const InstancePlace* NamedInstances::find(const std::string& name) const {
    const auto found = _places.find(makeKey(name));
    return found == _places.end() ? nullptr : &found->second;
}

} // namespace Vell::FontLoaders::Internal
