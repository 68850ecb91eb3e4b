// Fallback by coverage depends on the language of the text.

#include "CoverageFonts.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

const CodeRanges han = {{0x4E00, 0x9FFF}};
constexpr const char32_t* bone = U"\u9AA8"; // drawn differently in Japan and in China

struct LanguageRow {
    const char* tag;
    const char* family;
};

} // namespace

class CoverageLanguage : public ::testing::Test {
protected:
    CoverageLanguage() {
        install(sandbox, "Own", {{'A', 'Z'}});
        for (const char* family : {"Plain", "Japan", "China", "Taiwan", "Hong Kong", "Korea"}) {
            install(sandbox, family, han);
        }
    }

    const FontSandbox sandbox{makeLanguageRule("Plain", "en") + makeLanguageRule("Japan", "ja") +
                              makeLanguageRule("China", "zh-cn") + makeLanguageRule("Taiwan", "zh-tw") +
                              makeLanguageRule("Hong Kong", "zh-hk") + makeLanguageRule("Korea", "ko")};
};

TEST_F(CoverageLanguage, DecidesWhereHanCharactersComeFrom) {
    const CoverageFonts fonts;
    for (const LanguageRow& row : {LanguageRow{"ja", "Japan"},
                                   {"ja-JP", "Japan"},
                                   {"JA-jp", "Japan"},
                                   {"zh", "China"},
                                   {"zh-CN", "China"},
                                   {"zh-Hans", "China"},
                                   {"zh-Hans-HK", "China"},
                                   {"zh-Hant", "Taiwan"},
                                   {"zh-TW", "Taiwan"},
                                   {"zh-Hant-CN", "Taiwan"},
                                   {"zh-HK", "Hong Kong"},
                                   {"zh-Hant-HK", "Hong Kong"},
                                   {"yue", "Hong Kong"},
                                   {"cmn", "China"},
                                   {"ko", "Korea"},
                                   {"ko-KR", "Korea"},
                                   {"ko-Kore-KR-x-own", "Korea"}}) {
        EXPECT_EQ(fonts.find(bone, {"Own", row.tag}), row.family) << row.tag;
    }
}

TEST_F(CoverageLanguage, DoesNotOutweighTheFamiliesThatTheTextAndTheClientName) {
    const CoverageFonts fonts;
    EXPECT_EQ(fonts.find(bone, {"China", "ja"}), "China");
    EXPECT_EQ(fonts.find(bone, {"Own", "ja", false, false, {"Korea"}}), "Korea");
}

TEST_F(CoverageLanguage, IsNoReasonToMissACharacter) {
    const CoverageFonts fonts;
    EXPECT_NE(fonts.find(bone, {"Own", "tlh"}), "none");
    EXPECT_NE(fonts.find(bone, {"Own", "i-klingon"}), "none");
    EXPECT_NE(fonts.find(bone, {"Own", "x-own"}), "none");
}

TEST_F(CoverageLanguage, MayUseAnyStyle) {
    EXPECT_EQ(CoverageFonts().findDrawn(bone, {"Own", "ja", true, true}), "Japan bold italic");
}

using CoverageLanguageDeathTest = CoverageLanguage;

// fontconfig reads the environment once, so each language needs a process of its own.
TEST_F(CoverageLanguageDeathTest, IsThatOfTheProcessIfTheTextHasNone) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const auto& [locale, family] :
         {std::pair<const char*, const char*>{"ja_JP.UTF-8", "Japan"}, {"zh_TW.UTF-8", "Taiwan"}}) {
        const auto ask = [&locale = locale] {
            setenv("FC_LANG", locale, 1);
            std::fputs(CoverageFonts().find(bone, {"Own", ""}).c_str(), stderr);
            std::fputs(CoverageFonts().find(bone, {"Own", "und"}).c_str(), stderr);
            std::fputs(CoverageFonts().find(bone, {"Own", "ko"}).c_str(), stderr);
            std::exit(0);
        };
        EXPECT_EXIT(ask(), ::testing::ExitedWithCode(0), std::string("^") + family + family + "Korea$");
    }
}

TEST(CoverageLanguageOfRealFonts, DecidesWhereHanCharactersComeFrom) {
    const FontSandbox sandbox("<include>/etc/fonts/conf.d</include>");
    sandbox.link(std::string(dejaVu) + "DejaVuSans.ttf");
    sandbox.link(std::string(notoCjk) + "NotoSansCJK-Regular.ttc");
    const CoverageFonts fonts("DejaVu Sans");
    for (const LanguageRow& row : {LanguageRow{"ja", "Noto Sans CJK JP"},
                                   {"zh-Hans", "Noto Sans CJK SC"},
                                   {"zh-Hant", "Noto Sans CJK TC"},
                                   {"zh-HK", "Noto Sans CJK HK"},
                                   {"ko-KR", "Noto Sans CJK KR"}}) {
        EXPECT_EQ(fonts.find(bone, {"DejaVu Sans", row.tag}), row.family) << row.tag;
    }
    EXPECT_EQ(fonts.find(U"\u0416\u0301", {"DejaVu Sans", "ja"}), "DejaVu Sans");
}

} // namespace Vell::Testing
