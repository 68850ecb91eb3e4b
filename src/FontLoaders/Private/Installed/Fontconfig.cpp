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

void addUnlessEmpty(FcPattern* pattern, const char* object, const std::string& text) {
    if (!text.empty()) {
        FcPatternAddString(pattern, object, toFontconfig(text));
    }
}

void complete(FcConfig* config, FcPattern* pattern) {
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(config, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
}

FontconfigPtr<FcPattern> makeRequest(FcConfig* config, const std::string& name) {
    FontconfigPtr<FcPattern> pattern(FcPatternCreate());
    addUnlessEmpty(pattern.get(), FC_FAMILY, name);
    complete(config, pattern.get());
    return pattern;
}

FontconfigPtr<FcPattern> makeRequest(FcConfig* config, const SortRequest& request) {
    FontconfigPtr<FcPattern> pattern(FcPatternCreate());
    addUnlessEmpty(pattern.get(), FC_FAMILY, request.family);
    addUnlessEmpty(pattern.get(), FC_LANG, request.language);
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, request.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern.get(), FC_SLANT, request.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    complete(config, pattern.get());
    return pattern;
}

FontconfigPtr<FcFontSet> sort(FcConfig* config, FcFontSet* fonts, FcPattern* request) {
    FcResult result = FcResultNoMatch;
    return FontconfigPtr<FcFontSet>(FcFontSetSort(config, &fonts, 1, request, FcFalse, nullptr, &result));
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
    return sort(config, fonts, makeRequest(config, name).get());
}

FontconfigPtr<FcFontSet> sortFonts(FcConfig* config, FcFontSet* fonts, const SortRequest& request) {
    return sort(config, fonts, makeRequest(config, request).get());
}

} // namespace Vell::FontLoaders::Internal
