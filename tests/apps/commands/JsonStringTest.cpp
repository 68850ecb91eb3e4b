#include "commands/JsonString.h"

#include <gmock/gmock.h>

namespace Vell::Tool {

namespace {

TEST(JsonString, IsTheTextBetweenTheQuotes) {
    EXPECT_EQ(parseJsonString("\"\""), "");
    EXPECT_EQ(parseJsonString(" \t\"a b\"\r"), "a b");
    EXPECT_EQ(parseJsonString("\"\u05D0\xFF\""), "\u05D0\xFF");
}

TEST(JsonString, HasEscapes) {
    EXPECT_EQ(parseJsonString(R"("\"\\\/\b\f\n\r\t")"), "\"\\/\b\f\n\r\t");
    EXPECT_EQ(parseJsonString(R"("\u0041\u05d0\u20AC\uD83D\uDE00")"), "A\u05D0\u20AC\U0001F600");
    EXPECT_EQ(parseJsonString(R"("\u0000")"), std::string(1, '\0'));
}

TEST(JsonString, ReplacesLoneSurrogates) {
    EXPECT_EQ(parseJsonString(R"("\ud83d")"), "\uFFFD");
    EXPECT_EQ(parseJsonString(R"("\ude00\ud83dx")"), "\uFFFD\uFFFDx");
    EXPECT_EQ(parseJsonString(R"("\ud83d\u0041")"), "\uFFFDA");
}

TEST(JsonString, IsNothingElse) {
    for (const char* line : {"", " ", "\"", "a", "\"a", "a\"", "\"a\"b\"", "\"a\" \"b\"", "\"\\x\"", "\"\\\"",
                             "\"\\u12\"", "\"\\u12g4\"", "\"a\nb\"", "null", "'a'"}) {
        EXPECT_EQ(parseJsonString(line), std::nullopt) << line;
    }
}

TEST(JsonString, ComesBackAsItWas) {
    EXPECT_EQ(makeJsonString("a/\"b\"\\\n\x01"), R"("a/\"b\"\\\u000a\u0001")");
    for (const std::string text : {"", "plain", "\"\\\t\r\n\x1F", "\u00E9\u4E2D\U0001F600"}) {
        EXPECT_EQ(parseJsonString(makeJsonString(text)), text);
    }
    EXPECT_EQ(makeJsonString("\xFF"), "\"\uFFFD\"");
}

} // namespace

} // namespace Vell::Tool
