#include <FontLoaders/Private/Installed/InstalledFace.h>

#include <FontLoaders/Private/Installed/Fontconfig.h>

#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

/// The bits of fontconfig's index that number the face in its file. The bits above number the named instance.
constexpr unsigned int faceIndexMask = 0xFFFF;
constexpr unsigned int faceIndexBits = 16;

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

std::vector<std::string> getStrings(const FcPattern* pattern, const char* object) {
    std::vector<std::string> strings;
    while (auto text = tryGetString(pattern, object, static_cast<int>(strings.size()))) {
        strings.push_back(std::move(*text));
    }
    return strings;
}

unsigned int getIndex(const FcPattern* pattern) {
    return static_cast<unsigned int>(getInteger(pattern, FC_INDEX, 0));
}

} // namespace

std::optional<InstalledInstance> tryReadInstance(const FcPattern* pattern) {
    auto file = tryGetString(pattern, FC_FILE);
    auto families = getStrings(pattern, FC_FAMILY);
    if (!file || families.empty() || describesAxes(pattern)) {
        return std::nullopt;
    }
    InstalledFace face{};
    face.families = std::move(families);
    face.file = std::move(*file);
    face.index = getIndex(pattern) & faceIndexMask;
    face.weight = getNumber(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR);
    face.width = getNumber(pattern, FC_WIDTH, FC_WIDTH_NORMAL);
    face.slant = getInteger(pattern, FC_SLANT, FC_SLANT_ROMAN);
    face.isScalable = getBool(pattern, FC_SCALABLE, true) && getBool(pattern, FC_OUTLINE, true);
    face.isColored = getBool(pattern, FC_COLOR, false);
    face.isSymbolic = getBool(pattern, FC_SYMBOL, false);
    face.supportsEmoji = supportsLanguage(pattern, emojiLanguage);
    face.characters = tryGetCharacters(pattern);
    return InstalledInstance{std::move(face), getIndex(pattern) >> faceIndexBits,
                             getStrings(pattern, FC_STYLE)};
}

std::optional<InstalledFace> tryReadFace(const FcPattern* pattern) {
    if ((getIndex(pattern) & ~faceIndexMask) != 0) {
        return std::nullopt;
    }
    auto listed = tryReadInstance(pattern);
    return listed ? std::make_optional(std::move(listed->face)) : std::nullopt;
}

bool describesAxes(const FcPattern* pattern) {
    return getBool(pattern, FC_VARIABLE, false);
}

std::pair<std::string, unsigned int> getPlace(const FcPattern* pattern) {
    return {tryGetString(pattern, FC_FILE).value_or(std::string()), getIndex(pattern) & faceIndexMask};
}

bool describesFace(const FcPattern* pattern, const InstalledFace& face) {
    return getPlace(pattern) == std::make_pair(face.file, face.index);
}

} // namespace Vell::FontLoaders::Internal
