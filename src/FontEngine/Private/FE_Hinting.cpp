#include <FontEngine/Private/FE_Hinting.h>

#include <array>
#include <string_view>

namespace Vell::FontEngine::Internal {

namespace {

constexpr int autoHint = FT_LOAD_FORCE_AUTOHINT;
constexpr int light = FT_LOAD_TARGET_LIGHT;

constexpr bool isCyrillic(unsigned int code) {
    return code >= 0x410 && code <= 0x44F;
}

constexpr bool isDigit(unsigned int code) {
    return code >= '0' && code <= '9';
}

using Rule = int (*)(unsigned int code);

constexpr int hintByDefault(unsigned int) {
    return 0;
}

constexpr int alwaysAutoHint(unsigned int) {
    return autoHint;
}

constexpr int autoHintCyrillic(unsigned int code) {
    return isCyrillic(code) ? autoHint : 0;
}

constexpr int autoHintRAndX(unsigned int code) {
    return code == 'r' || code == 'x' ? autoHint : 0;
}

constexpr int lightCyrillic(unsigned int code) {
    return isCyrillic(code) ? light : 0;
}

constexpr int lightCyrillicAndDigits(unsigned int code) {
    return isCyrillic(code) || isDigit(code) ? light : 0;
}

constexpr int lightOrAutoHintAsterisk(unsigned int code) {
    return code == '*' ? autoHint : lightCyrillicAndDigits(code);
}

struct Family {
    std::string_view name;
    Rule regular;
    Rule bold;
    Rule italic;
    Rule boldItalic;
};

/// Tuned by eye for each family. In a row, hintByDefault is as deliberate as the other rules.
constexpr std::array<Family, 8> families{{
    {"Times New Roman", hintByDefault, hintByDefault, hintByDefault, autoHintRAndX},
    {"Charter", alwaysAutoHint, hintByDefault, alwaysAutoHint, alwaysAutoHint},
    {"Yu Gothic", alwaysAutoHint, alwaysAutoHint, alwaysAutoHint, alwaysAutoHint},
    {"Yu Gothic Medium", alwaysAutoHint, alwaysAutoHint, alwaysAutoHint, alwaysAutoHint},
    {"Gulim", autoHintCyrillic, autoHintCyrillic, autoHintCyrillic, autoHintCyrillic},
    {"Cormorant", lightCyrillic, lightCyrillic, lightCyrillic, lightCyrillic},
    {"Helvetica", lightOrAutoHintAsterisk, lightCyrillicAndDigits, lightCyrillicAndDigits, hintByDefault},
    {"Helvetica Light", hintByDefault, hintByDefault, hintByDefault, hintByDefault},
}};

const Family* findFamily(std::string_view name) {
    for (const Family& family : families) {
        if (family.name == name) {
            return &family;
        }
    }
    return nullptr;
}

Rule chooseRule(const Family& family, bool isBold, bool isItalic) {
    if (isBold) {
        return isItalic ? family.boldItalic : family.bold;
    }
    return isItalic ? family.italic : family.regular;
}

} // namespace

int getHintingFlags(const char* family, const BitmapGlyphInfo& info) {
    const Family* const found = family != nullptr ? findFamily(family) : nullptr;
    return found != nullptr ? chooseRule(*found, info.isBold(), info.isItalic())(info.getUnicode()) : 0;
}

} // namespace Vell::FontEngine::Internal
