#include "specimen/Html.h"

#include <support/ExpectAssertion.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

TEST(Html, EscapesSpecialCharacters) {
    EXPECT_EQ(escapeHtml("<b a=\"1\" c='2'>&amp;</b>"),
              "&lt;b a=&quot;1&quot; c=&#39;2&#39;&gt;&amp;amp;&lt;/b&gt;");
    EXPECT_EQ(escapeHtml("Schöne Schrift 字 🙂"), "Schöne Schrift 字 🙂");
    EXPECT_EQ(escapeHtml(""), "");
}

TEST(Html, ReplacesCharactersThatHtmlForbids) {
    EXPECT_EQ(escapeHtml(std::string("a\0b\x1B\x7F\xC2\x85z", 8)), "a�b���z");
    EXPECT_EQ(escapeHtml("\xFF\xE4\xB8"), "��");
    EXPECT_EQ(quoteJson("\n\xFF"), "\"��\"");
}

TEST(Html, QuotesJsonThatCannotEndItsScript) {
    EXPECT_EQ(quoteJson("</script><!-- & \"\\"),
              "\"\\u003c/script\\u003e\\u003c!-- \\u0026 \\u0022\\u005c\"");
    EXPECT_EQ(quoteJson("Ω"), "\"Ω\"");
}

TEST(Html, EncodesBase64) {
    const char* const texts[][2] = {{"", ""},
                                    {"f", "Zg=="},
                                    {"fo", "Zm8="},
                                    {"foo", "Zm9v"},
                                    {"foob", "Zm9vYg=="},
                                    {"fooba", "Zm9vYmE="},
                                    {"foobar", "Zm9vYmFy"}};
    for (const auto& text : texts) {
        EXPECT_EQ(encodeBase64(text[0]), text[1]);
    }
    EXPECT_EQ(encodeBase64(std::string("\xFF\xFE\x00\x00", 4)), "//4AAA==");
}

TEST(Html, FillsATemplateOnceAndNotTheValues) {
    EXPECT_EQ(fillTemplate("<p>{{a}}-{{b}}{{a}}", {{"a", "{{b}}"}, {"b", "2"}}), "<p>{{b}}-2{{b}}");
    EXPECT_EQ(fillTemplate("plain", {}), "plain");
}

TEST(HtmlDeathTest, AssertsThatNamesAndValuesMatch) {
    const std::string noValue = "apps/fontengine/Html:91: assertion failed: found != values.end()";
    VELL_EXPECT_ASSERTION(fillTemplate("{{a}}", {}), noValue);
    VELL_EXPECT_ASSERTION(fillTemplate("{{a", {{"a", "1"}}), noValue);
    VELL_EXPECT_ASSERTION(fillTemplate("a", {{"a", "1"}}),
                          "apps/fontengine/Html:112: assertion failed: used.size() == values.size()");
}

} // namespace

} // namespace Vell::Tool
