#include <FontLoaders/Private/Installed/InstalledFace.h>

#include <FontLoaders/Private/Installed/Fontconfig.h>

namespace Vell::FontLoaders::Internal {

namespace {

/// The bits of fontconfig's index that number the face in its file. The bits above number the named instance.
constexpr int faceIndexMask = 0xFFFF;

std::optional<std::string> tryGetString(const FcPattern* pattern, const char* object, int position = 0) {
    FcChar8* text = nullptr;
    if (FcPatternGetString(pattern, object, position, &text) != FcResultMatch) {
        return std::nullopt;
    }
    return fromFontconfig(text);
}

int getInteger(const FcPattern* pattern, const char* object, int fallback) {
    int value = 0;
    return FcPatternGetInteger(pattern, object, 0, &value) == FcResultMatch ? value : fallback;
}

double getNumber(const FcPattern* pattern, const char* object, double fallback) {
    double value = 0;
    return FcPatternGetDouble(pattern, object, 0, &value) == FcResultMatch ? value : fallback;
}

bool getBool(const FcPattern* pattern, const char* object, bool fallback) {
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern, object, 0, &value) == FcResultMatch ? value == FcTrue : fallback;
}

const FcCharSet* tryGetCharacters(const FcPattern* pattern) {
    FcCharSet* characters = nullptr;
    return FcPatternGetCharSet(pattern, FC_CHARSET, 0, &characters) == FcResultMatch ? characters : nullptr;
}

bool supportsLanguage(const FcPattern* pattern, const char* language) {
    FcLangSet* languages = nullptr;
    return FcPatternGetLangSet(pattern, FC_LANG, 0, &languages) == FcResultMatch &&
           FcLangSetHasLang(languages, toFontconfig(language)) == FcLangEqual;
}

std::vector<std::string> getFamilies(const FcPattern* pattern) {
    std::vector<std::string> families;
    while (auto family = tryGetString(pattern, FC_FAMILY, static_cast<int>(families.size()))) {
        families.push_back(std::move(*family));
    }
    return families;
}

bool isDefaultInstance(const FcPattern* pattern) {
    const int index = getInteger(pattern, FC_INDEX, 0);
    return (index & ~faceIndexMask) == 0 && !getBool(pattern, FC_VARIABLE, false);
}

} // namespace

std::optional<InstalledFace> tryReadFace(const FcPattern* pattern) {
    auto file = tryGetString(pattern, FC_FILE);
    auto families = getFamilies(pattern);
    if (!file || families.empty() || !isDefaultInstance(pattern)) {
        return std::nullopt;
    }
    InstalledFace face{};
    face.families = std::move(families);
    face.file = std::move(*file);
    face.index = static_cast<unsigned int>(getInteger(pattern, FC_INDEX, 0));
    face.weight = getNumber(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR);
    face.width = getNumber(pattern, FC_WIDTH, FC_WIDTH_NORMAL);
    face.slant = getInteger(pattern, FC_SLANT, FC_SLANT_ROMAN);
    face.isScalable = getBool(pattern, FC_SCALABLE, true) && getBool(pattern, FC_OUTLINE, true);
    face.isColored = getBool(pattern, FC_COLOR, false);
    face.isSymbolic = getBool(pattern, FC_SYMBOL, false);
    face.supportsEmoji = supportsLanguage(pattern, emojiLanguage);
    face.characters = tryGetCharacters(pattern);
    return face;
}

bool describesFace(const FcPattern* pattern, const InstalledFace& face) {
    const auto index = static_cast<unsigned int>(getInteger(pattern, FC_INDEX, 0) & faceIndexMask);
    return index == face.index && tryGetString(pattern, FC_FILE) == face.file;
}

} // namespace Vell::FontLoaders::Internal
