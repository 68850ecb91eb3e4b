#include <Utils/Public/Utf8.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace Vell {
namespace {

using CodePoints = std::vector<unsigned int>;

/// Decodes from a block of exactly the text's size, so that the address sanitizer finds any read beyond it.
CodePoints decode(const std::string& text) {
    const std::unique_ptr<char[]> block(new char[text.size()]);
    std::copy(text.begin(), text.end(), block.get());
    const char* position = block.get();
    const char* const end = position + text.size();
    CodePoints codePoints;
    while (position < end) {
        codePoints.push_back(decodeUtf8(position, end));
    }
    EXPECT_EQ(position, end);
    return codePoints;
}

struct Case {
    const char* name;
    std::string text;
    CodePoints expected;
};

class Utf8Cases : public testing::TestWithParam<Case> {};

TEST_P(Utf8Cases, Decode) {
    EXPECT_EQ(decode(GetParam().text), GetParam().expected);
}

std::string getName(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

constexpr unsigned int bad = 0xFFFD;

const Case wellFormed[] = {
    {"Nul", std::string(1, '\0'), {0}},
    {"LastOfOneByte", "\x7F", {0x7F}},
    {"FirstOfTwoBytes", "\xC2\x80", {0x80}},
    {"LastOfTwoBytes", "\xDF\xBF", {0x7FF}},
    {"FirstOfThreeBytes", "\xE0\xA0\x80", {0x800}},
    {"LastBeforeTheSurrogates", "\xED\x9F\xBF", {0xD7FF}},
    {"FirstAfterTheSurrogates", "\xEE\x80\x80", {0xE000}},
    {"ReplacementCharacter", "\xEF\xBF\xBD", {0xFFFD}},
    {"LastOfThreeBytes", "\xEF\xBF\xBF", {0xFFFF}},
    {"FirstOfFourBytes", "\xF0\x90\x80\x80", {0x10000}},
    {"Emoji", "\xF0\x9F\x98\x80", {0x1F600}},
    {"LastOfUnicode", "\xF4\x8F\xBF\xBF", {0x10FFFF}},
    {"Mixed", "a\xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9Ez", {'a', 0xE9, 0x20AC, 0x1D11E, 'z'}},
};
INSTANTIATE_TEST_SUITE_P(WellFormed, Utf8Cases, testing::ValuesIn(wellFormed), getName);

const Case illFormed[] = {
    {"LoneTrailingByte", "\x80", {bad}},
    {"TrailingBytes", "\x80\xBF\x80", {bad, bad, bad}},
    {"OverlongOfTwoBytes", "\xC0\xAF", {bad, bad}},
    {"OverlongOfTwoBytesAtItsEnd", "\xC1\xBF", {bad, bad}},
    {"OverlongOfThreeBytes", "\xE0\x80\xAF", {bad, bad, bad}},
    {"OverlongOfThreeBytesAtItsEnd", "\xE0\x9F\xBF", {bad, bad, bad}},
    {"OverlongOfFourBytes", "\xF0\x80\x80\xAF", {bad, bad, bad, bad}},
    {"OverlongOfFourBytesAtItsEnd", "\xF0\x8F\xBF\xBF", {bad, bad, bad, bad}},
    {"FirstSurrogate", "\xED\xA0\x80", {bad, bad, bad}},
    {"LastSurrogate", "\xED\xBF\xBF", {bad, bad, bad}},
    {"SurrogatePair", "\xED\xA0\xBD\xED\xB8\x80", {bad, bad, bad, bad, bad, bad}},
    {"AboveUnicode", "\xF4\x90\x80\x80", {bad, bad, bad, bad}},
    {"LeadF5", "\xF5\x80\x80\x80", {bad, bad, bad, bad}},
    {"LeadFF", "\xFF\xFE", {bad, bad}},
    {"FormerFiveBytes", "\xF8\x88\x80\x80\x80", {bad, bad, bad, bad, bad}},
    {"FourBytesCutByALetter", "\xF0\x9F\x98\x41", {bad, 'A'}},
    {"ThreeBytesCutByALetter", "\xE2\x82\x41", {bad, 'A'}},
    {"TwoBytesCutByALetter", "\xC3\x41", {bad, 'A'}},
    {"LeadCutByALead", "\xE2\xE2\x82\xAC", {bad, 0x20AC}},
    {"CutByTwoLeads", "\xF0\x9F\xC3\xC3\xA9", {bad, bad, 0xE9}},
    {"LeadCutByABadSecondByte", "\xF0\x41\x98\x80", {bad, 'A', bad, bad}},
    {"TheStandardsExample",
     "\x61\xF1\x80\x80\xE1\x80\xC2\x62\x80\x63\x80\xBF\x64",
     {0x61, bad, bad, bad, 0x62, bad, 0x63, bad, bad, 0x64}},
};
INSTANTIATE_TEST_SUITE_P(IllFormed, Utf8Cases, testing::ValuesIn(illFormed), getName);

const Case truncated[] = {
    {"OneOfTwo", "\xC3", {bad}},
    {"OneOfThree", "\xE2", {bad}},
    {"TwoOfThree", "\xE2\x82", {bad}},
    {"OneOfFour", "\xF0", {bad}},
    {"TwoOfFour", "\xF0\x9F", {bad}},
    {"ThreeOfFour", "\xF0\x9F\x98", {bad}},
    {"AfterALetter", "a\xF0\x9F\x98", {'a', bad}},
    {"OverlongTail", "\xE0\x80", {bad, bad}},
    {"SurrogateTail", "\xED\xA0", {bad, bad}},
};
INSTANTIATE_TEST_SUITE_P(Truncated, Utf8Cases, testing::ValuesIn(truncated), getName);

TEST(Utf8, ReadsNothingBeyondTheEnd) {
    const std::string text = "\xE2\x82\xAC";
    const char* position = text.data();
    EXPECT_EQ(decodeUtf8(position, text.data() + 2), bad) << "although the third byte is there";
    EXPECT_EQ(position, text.data() + 2);
}

} // namespace
} // namespace Vell
