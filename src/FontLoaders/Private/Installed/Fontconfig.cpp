#include <FontLoaders/Private/Installed/Fontconfig.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace Vell::FontLoaders::Internal {

namespace {

/// The generic families in fontconfig's own configuration files, including their older spellings.
constexpr const char* genericFamilies[] = {
    "sans-serif", "serif", "monospace", "cursive", "fantasy",    "system-ui",
    "math",       "emoji", "sans",      "mono",    "sans serif", "system ui",
};

struct BoundFamily {
    std::string name;
    FcValueBinding binding;
};

std::optional<BoundFamily> tryGetFamily(const FcPattern* pattern, int position) {
    FcValue value;
    FcValueBinding binding = FcValueBindingWeak;
    const FcResult result = FcPatternGetWithBinding(pattern, FC_FAMILY, position, &value, &binding);
    if (result != FcResultMatch || value.type != FcTypeString) {
        return std::nullopt;
    }
    return BoundFamily{fromFontconfig(value.u.s), binding};
}

/// The families, in order, to which the configuration expands a request for one family.
std::vector<BoundFamily> substitute(FcConfig* config, const std::string& family, FcValueBinding binding) {
    const FontconfigPtr<FcPattern> pattern(FcPatternCreate());
    FcValue value;
    value.type = FcTypeString;
    value.u.s = toFontconfig(family);
    const auto add = binding == FcValueBindingWeak ? FcPatternAddWeak : FcPatternAdd;
    add(pattern.get(), FC_FAMILY, value, FcTrue);
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);

    std::vector<BoundFamily> families;
    while (auto bound = tryGetFamily(pattern.get(), static_cast<int>(families.size()))) {
        families.push_back(std::move(*bound));
    }
    return families;
}

FontconfigPtr<FcPattern> makeRequest(FcConfig* config, const std::string& name) {
    FontconfigPtr<FcPattern> pattern(FcPatternCreate());
    if (!name.empty()) {
        FcPatternAddString(pattern.get(), FC_FAMILY, toFontconfig(name));
    }
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

} // namespace

bool isGenericFamily(const std::string& name) {
    return std::any_of(std::begin(genericFamilies), std::end(genericFamilies), [&name](const char* generic) {
        return FcStrCmpIgnoreCase(toFontconfig(name), toFontconfig(generic)) == 0;
    });
}

std::vector<std::string> getSameFamilies(FcConfig* config, const std::string& family) {
    // A pattern does not show the binding "same": such a family gets the binding of the family that it is
    // bound to. So the same families are those that are strong in a strong request and weak in a weak one. No
    // rule can test a binding, so both requests give the same names in the same positions.
    const std::vector<BoundFamily> strong = substitute(config, family, FcValueBindingStrong);
    const std::vector<BoundFamily> weak = substitute(config, family, FcValueBindingWeak);
    std::vector<std::string> same;
    for (std::size_t i = 0; i < std::min(strong.size(), weak.size()); ++i) {
        if (strong[i].binding == FcValueBindingStrong && weak[i].binding == FcValueBindingWeak) {
            same.push_back(strong[i].name);
        }
    }
    return same;
}

std::string getBestMatchingFamily(FcConfig* config, FcFontSet* fonts, const std::string& name) {
    const FontconfigPtr<FcPattern> request = makeRequest(config, name);
    FcResult result = FcResultNoMatch;
    const FontconfigPtr<FcPattern> match(FcFontSetMatch(config, &fonts, 1, request.get(), &result));
    FcChar8* family = nullptr;
    if (!match || FcPatternGetString(match.get(), FC_FAMILY, 0, &family) != FcResultMatch) {
        return {};
    }
    return fromFontconfig(family);
}

FontconfigPtr<FcFontSet> sortFonts(FcConfig* config, FcFontSet* fonts, const std::string& name) {
    const FontconfigPtr<FcPattern> request = makeRequest(config, name);
    FcResult result = FcResultNoMatch;
    return FontconfigPtr<FcFontSet>(
        FcFontSetSort(config, &fonts, 1, request.get(), FcFalse, nullptr, &result));
}

} // namespace Vell::FontLoaders::Internal
