#include <FontLoaders/Private/Coverage/LanguageTag.h>

#include <FontLoaders/Private/Installed/Fontconfig.h>
#include <FontLoaders/Public/Exceptions.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <vector>

namespace Vell::FontLoaders::Internal {

namespace {

/// Tags that BCP 47 keeps although they break its syntax, in lower case.
constexpr const char* irregularTags[] = {
    "en-gb-oed", "i-ami", "i-bnn",     "i-default", "i-enochian", "i-hak",
    "i-klingon", "i-lux", "i-mingo",   "i-navajo",  "i-pwn",      "i-tao",
    "i-tay",     "i-tsu", "sgn-be-fr", "sgn-be-nl", "sgn-ch-de",
};

/// Languages that fontconfig names by a territory where a tag has a script.
struct TerritoryRow {
    const char* language;
    const char* script;
    const char* name;
};

constexpr TerritoryRow territoryRows[] = {
    {"az", "arab", "az-ir"},
    {"ku", "arab", "ku-iq"},
    {"mn", "mong", "mn-cn"},
    {"pa", "arab", "pa-pk"},
};

/// Languages that are written in Han characters as Chinese is.
struct ChineseRow {
    const char* language;
    const char* name; ///< if the tag has neither script nor region
};

constexpr ChineseRow chineseRows[] = {
    {"zh", "zh-cn"}, {"cmn", "zh-cn"}, {"wuu", "zh-cn"}, {"yue", "zh-hk"}, {"hak", "zh-tw"}, {"nan", "zh-tw"},
};

bool isLetter(char c) {
    return c >= 'a' && c <= 'z';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool hasLetters(const std::string& part, std::size_t least, std::size_t most) {
    return part.size() >= least && part.size() <= most && std::all_of(part.begin(), part.end(), isLetter);
}

bool hasLength(const std::string& part, std::size_t least, std::size_t most) {
    return part.size() >= least && part.size() <= most;
}

bool isRegion(const std::string& part) {
    return hasLetters(part, 2, 2) || (part.size() == 3 && std::all_of(part.begin(), part.end(), isDigit));
}

bool isVariant(const std::string& part) {
    return hasLength(part, 5, 8) || (part.size() == 4 && isDigit(part[0]));
}

/// The subtags of a tag in lower case.
std::vector<std::string> split(const std::string& tag) {
    std::vector<std::string> parts(1);
    for (const char c : tag) {
        if (c == '-') {
            parts.emplace_back();
        } else {
            parts.back().push_back(toLower(c));
        }
    }
    return parts;
}

/// Reads the subtags in the order of BCP 47's grammar.
class TagReader {
public:
    explicit TagReader(const std::string& tag)
        : _parts(split(tag)) {}

    /// Whether the whole tag follows the grammar.
    bool read() {
        const bool hasParts = std::all_of(_parts.begin(), _parts.end(), [](const std::string& part) {
            return hasLength(part, 1, 8) &&
                   std::all_of(part.begin(), part.end(), [](char c) { return isLetter(c) || isDigit(c); });
        });
        return hasParts && (readPrivate() || (readLanguage() && readRest())) && _next == _parts.size();
    }

    std::string language; // these three in lower case, or empty
    std::string script;
    std::string region;

private:
    template <class Accepts>
    bool take(const Accepts& accepts, std::string* kept = nullptr) {
        if (_next == _parts.size() || !accepts(_parts[_next])) {
            return false;
        }
        if (kept != nullptr) {
            *kept = _parts[_next];
        }
        ++_next;
        return true;
    }

    bool readLanguage() {
        const bool isShort = take([](const auto& part) { return hasLetters(part, 2, 3); }, &language);
        for (int i = 0; isShort && i < 3; ++i) {
            take([](const auto& part) { return hasLetters(part, 3, 3); });
        }
        return isShort || take([](const auto& part) { return hasLetters(part, 4, 8); }, &language);
    }

    bool readRest() {
        take([](const auto& part) { return hasLetters(part, 4, 4); }, &script);
        take(isRegion, &region);
        while (take(isVariant)) {
        }
        while (take([](const auto& part) { return part.size() == 1 && part != "x"; })) {
            if (!takeAll(2)) {
                return false;
            }
        }
        return _next == _parts.size() || readPrivate();
    }

    bool readPrivate() {
        return take([](const auto& part) { return part == "x"; }) && takeAll(1);
    }

    /// Takes at least one subtag of at least this length.
    bool takeAll(std::size_t least) {
        const std::size_t first = _next;
        while (take([least](const auto& part) { return part.size() >= least; })) {
        }
        return _next != first;
    }

    std::vector<std::string> _parts;
    std::size_t _next = 0;
};

bool isIrregular(const std::string& tag) {
    std::string lower;
    std::transform(tag.begin(), tag.end(), std::back_inserter(lower), toLower);
    return std::find(std::begin(irregularTags), std::end(irregularTags), lower) != std::end(irregularTags);
}

/// fontconfig would not take a region that it does not know ("ko-kr") for the language.
bool isKnownToFontconfig(const std::string& language) {
    struct Deleter {
        void operator()(FcStrSet* set) const { FcStrSetDestroy(set); }
    };
    const std::unique_ptr<FcStrSet, Deleter> languages(FcGetLangs());
    return languages && FcStrSetMember(languages.get(), toFontconfig(language)) == FcTrue;
}

/// The script decides about the characters, and the region about what it leaves open.
std::string nameChinese(const TagReader& tag, const std::string& usual) {
    const std::string name = tag.region.empty() ? usual : "zh-" + tag.region;
    const bool isTraditional = name == "zh-tw" || name == "zh-hk" || name == "zh-mo";
    if (tag.script == "hant") {
        return isTraditional ? name : "zh-tw";
    }
    return isTraditional && tag.script != "hans" ? name : "zh-cn";
}

std::string nameLanguage(const TagReader& tag) {
    for (const ChineseRow& row : chineseRows) {
        if (tag.language == row.language) {
            return nameChinese(tag, row.name);
        }
    }
    for (const TerritoryRow& row : territoryRows) {
        if (tag.region.empty() && tag.language == row.language && tag.script == row.script) {
            return row.name;
        }
    }
    const std::string regional = tag.language + "-" + tag.region;
    return isKnownToFontconfig(regional) ? regional : tag.language;
}

} // namespace

std::string findFontconfigLanguage(const std::string& tag) {
    if (tag.empty() || isIrregular(tag)) {
        return {};
    }
    TagReader reader(tag);
    if (!reader.read()) {
        throw FontLoaderException(fmt::format("\"{}\" is not a language tag (BCP 47)", tag));
    }
    return reader.language == "und" ? std::string() : nameLanguage(reader);
}

} // namespace Vell::FontLoaders::Internal
