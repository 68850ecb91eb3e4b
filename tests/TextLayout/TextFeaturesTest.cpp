#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

constexpr std::uint32_t makeTag(const char (&letters)[5]) {
    std::uint32_t tag = 0;
    for (int i = 0; i < 4; ++i) {
        tag = tag << 8U | static_cast<unsigned char>(letters[i]);
    }
    return tag;
}

std::string getError(std::string_view list) {
    try {
        parseTextFeatures(list);
    } catch (const TextLayoutException& error) {
        return error.what();
    }
    return "none";
}

TEST(TextFeatures, AreNamesWithSignsRangesAndValues) {
    EXPECT_THAT(parseTextFeatures("-liga,kern=0,ss01,aalt[3:5]=2,+dlig[7:]"),
                testing::ElementsAre(TextFeature{makeTag("liga"), 0}, TextFeature{makeTag("kern"), 0},
                                     TextFeature{makeTag("ss01")}, TextFeature{makeTag("aalt"), 2, 3, 5},
                                     TextFeature{makeTag("dlig"), 1, 7}));
}

TEST(TextFeatures, HoldForASingleByte) {
    EXPECT_THAT(parseTextFeatures("kern[3]=0"), testing::ElementsAre(TextFeature{makeTag("kern"), 0, 3, 4}));
}

TEST(TextFeatures, AreNoneInAnEmptyList) {
    EXPECT_THAT(parseTextFeatures(""), testing::IsEmpty());
}

TEST(TextFeatures, NameTheSettingThatIsMalformed) {
    EXPECT_EQ(getError("liga,kerning=0"), "\"kerning=0\" is not a setting of an OpenType feature");
    EXPECT_EQ(getError("liga,,kern"), "\"\" is not a setting of an OpenType feature");
    EXPECT_EQ(getError("kern=x"), "\"kern=x\" is not a setting of an OpenType feature");
}

} // namespace

} // namespace Vell::Testing
