#include <FontLoaders/FontLoaders.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;

TEST(SymbolicFonts, AreTheWellKnownFamilies) {
    for (const char* family :
         {"Symbol", "Wingdings", "Wingdings 2", "Wingdings 3", "Webdings", "Zapf Dingbats",
          "ITC Zapf Dingbats", "Marlett", "MT Extra", "Bookshelf Symbol 7"}) {
        EXPECT_TRUE(isSymbolicFont(family)) << family;
    }
}

TEST(SymbolicFonts, AreKnownOnlyByTheirExactNames) {
    for (const char* family : {"", "symbol", "SYMBOL", "Symbol ", " Symbol", "Symbols", "Wingdings 1",
                               "Wingdings 4", "Wingdings2", "Dingbats", "OpenSymbol", "DejaVu Sans"}) {
        EXPECT_FALSE(isSymbolicFont(family)) << family;
    }
    EXPECT_FALSE(isSymbolicFont(boost::string_ref("Symbol\0", 7)));
}

TEST(SymbolicFonts, NeedNoTerminatingZero) {
    EXPECT_TRUE(isSymbolicFont(boost::string_ref("Symbolic", 6)));
}

TEST(SymbolicFonts, DoNotIncludeAnEmptyName) {
    EXPECT_FALSE(isSymbolicFont(boost::string_ref()));
}

} // namespace Vell::Testing
