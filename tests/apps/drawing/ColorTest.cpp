#include "drawing/Color.h"

#include "Errors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace Vell::Tool {

namespace {

TEST(Color, ReadsShortAndLongHexadecimalColors) {
    EXPECT_EQ(parseColor("#1aF"), Color(0x11, 0xAA, 0xFF, 255));
    EXPECT_EQ(parseColor("#1aF8"), Color(0x11, 0xAA, 0xFF, 0x88));
    EXPECT_EQ(parseColor("#0102fE"), Color(1, 2, 254, 255));
    EXPECT_EQ(parseColor("#0102fE00"), Color(1, 2, 254, 0));
}

TEST(Color, KnowsNamesWhateverTheirCase) {
    EXPECT_EQ(parseColor("navy"), Color(0, 0, 128, 255));
    EXPECT_EQ(parseColor("White"), white);
    EXPECT_EQ(parseColor("BLACK"), black);
    EXPECT_EQ(parseColor("transparent").a, 0);
}

TEST(Color, KnowsEveryNameThatItLists) {
    std::string list = listColorNames();
    std::replace(list.begin(), list.end(), '\n', ' ');
    std::istringstream names(list);
    int count = 0;
    for (std::string name; names >> name; ++count) {
        EXPECT_EQ(name.back() == ',', !names.eof());
        EXPECT_NO_THROW(parseColor(name.substr(0, name.find(',')))) << name;
    }
    EXPECT_GT(count, 16);
}

TEST(Color, ListsNamesInLinesThatFitATerminal) {
    std::istringstream lines(listColorNames());
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST(Color, RefusesEverythingElseByName) {
    for (const char* text :
         {"", "#", "#1", "#12", "#12345", "#1234567", "#123456789", "#12g", "#-12", "nay", "12 34"}) {
        EXPECT_THROW(parseColor(text), UsageError) << text;
    }
    try {
        parseColor("blu");
        FAIL();
    } catch (const UsageError& error) {
        EXPECT_STREQ("'blu' is no colour: give #rgb, #rrggbb, #rrggbbaa or a name such as navy",
                     error.what());
    }
}

} // namespace

} // namespace Vell::Tool
