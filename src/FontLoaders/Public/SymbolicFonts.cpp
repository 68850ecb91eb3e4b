#include <FontLoaders/Public/SymbolicFonts.h>

#include <algorithm>
#include <iterator>

namespace Vell::FontLoaders {

bool isSymbolicFont(boost::string_ref family) {
    static constexpr const char* families[] = {
        "Symbol",   "Wingdings",     "Wingdings 2",       "Wingdings 3", "Webdings",
        "MT Extra", "Zapf Dingbats", "ITC Zapf Dingbats", "Marlett",     "Bookshelf Symbol 7",
    };
    return std::any_of(std::begin(families), std::end(families),
                       [family](const char* symbolic) { return family == symbolic; });
}

} // namespace Vell::FontLoaders
