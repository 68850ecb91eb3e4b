#include <support/ClientDescriptions.h>

#include <Gfx/Gfx.h>

#include <gtest/gtest.h>

#include <vector>

namespace Vell::Gfx {
namespace {

std::vector<unsigned int> listChars(boost::string_ref text) {
    std::vector<unsigned int> codes;
    UniversalFontMetrics::forEachCharInText(text, Testing::makeClientExtFontInfo(),
                                            [&](unsigned int codePoint) { codes.push_back(codePoint); });
    return codes;
}

TEST(ForEachCharInText, CallsBackOncePerCharacter) {
    using Codes = std::vector<unsigned int>;
    EXPECT_EQ(listChars(""), Codes());
    EXPECT_EQ(listChars(boost::string_ref()), Codes());
    EXPECT_EQ(listChars(boost::string_ref("a\0\xC3\xA9", 4)), (Codes{'a', 0, 0xE9}));
    EXPECT_EQ(listChars("\xF0\x9F\x98\x41"), (Codes{0xFFFD, 0x41}));
    EXPECT_EQ(listChars("\xC0\xAF"), (Codes{0xFFFD, 0xFFFD}));
    EXPECT_EQ(listChars("\xED\xA0\x80"), (Codes{0xFFFD, 0xFFFD, 0xFFFD}));
    EXPECT_EQ(listChars(boost::string_ref("a\xF0\x9F\x98\x80", 4)), (Codes{'a', 0xFFFD}))
        << "the text ends at its given length";
}

TEST(ForEachCharInText, StopsAtAnException) {
    int calls = 0;
    const auto fail = [&](unsigned int) {
        if (++calls == 2) {
            throw calls;
        }
    };
    EXPECT_THROW(UniversalFontMetrics::forEachCharInText("abc", Testing::makeClientExtFontInfo(), fail), int);
    EXPECT_EQ(calls, 2);
}

} // namespace
} // namespace Vell::Gfx
