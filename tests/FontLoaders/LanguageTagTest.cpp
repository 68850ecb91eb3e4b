#include <FontLoaders/FontLoaders.h>
#include <FontLoaders/Private/Coverage/LanguageTag.h>

#include <support/ErrorText.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;
using Internal::findFontconfigLanguage;

TEST(LanguageTag, HasTheSyntaxOfBcp47) {
    for (const char* tag :
         {"de", "DE", "haw", "zh-cmn-Hans-CN", "sl-rozaj-biske-1994", "de-CH-1901", "es-419",
          "hy-Latn-IT-arevela", "en-a-myext-b-another", "de-Latn-x-phonebk", "x-whatever", "i-klingon",
          "EN-GB-OED", "sgn-BE-FR", "qaa-Qaaa-QM-x-southern", "root", "english"}) {
        EXPECT_NO_THROW(findFontconfigLanguage(tag)) << tag;
    }
    for (const char* tag :
         {"e",         "de-",  "-de",          "de--AT",    "de_AT",   "de AT",     "de.UTF-8",
          "de-419-DE", "a-DE", "ar-a",         "de-x",      "x",       "abcdefghi", "de-abcdefghi",
          "d3",        "12",   "en-Latn-Latn", "i-unknown", "d\u00E9", "C.UTF-8"}) {
        EXPECT_EQ(getErrorText<FontLoaderException>([tag] { findFontconfigLanguage(tag); }),
                  "\"" + std::string(tag) + "\" is not a language tag (BCP 47)");
    }
    EXPECT_THROW(findFontconfigLanguage(std::string("de\0", 3)), FontLoaderException);
    EXPECT_THROW(findFontconfigLanguage(std::string(1'000'000, 'a')), FontLoaderException);
}

TEST(LanguageTag, IsNamedAsFontconfigNamesLanguages) {
    const std::pair<const char*, const char*> rows[] = {{"ja", "ja"},
                                                        {"ja-JP", "ja"},
                                                        {"ko-Kore-KR", "ko"},
                                                        {"de-Latn-AT-1996", "de"},
                                                        {"zh", "zh-cn"},
                                                        {"zh-Hans", "zh-cn"},
                                                        {"zh-Hant", "zh-tw"},
                                                        {"zh-Hans-TW", "zh-cn"},
                                                        {"zh-Hant-HK", "zh-hk"},
                                                        {"zh-Hant-SG", "zh-tw"},
                                                        {"zh-MO", "zh-mo"},
                                                        {"zh-US", "zh-cn"},
                                                        {"yue", "zh-hk"},
                                                        {"yue-Hans", "zh-cn"},
                                                        {"nan", "zh-tw"},
                                                        {"mn", "mn"},
                                                        {"mn-Mong", "mn-cn"},
                                                        {"mn-CN", "mn-cn"},
                                                        {"pa-Arab", "pa-pk"},
                                                        {"pa-PK", "pa-pk"},
                                                        {"tlh", "tlh"}};
    for (const auto& [tag, language] : rows) {
        EXPECT_EQ(findFontconfigLanguage(tag), language) << tag;
    }
}

TEST(LanguageTag, MayNameNoLanguage) {
    for (const char* tag : {"", "und", "UND", "und-Latn", "x-own", "i-default"}) {
        EXPECT_EQ(findFontconfigLanguage(tag), "") << tag;
    }
}

} // namespace Vell::Testing
