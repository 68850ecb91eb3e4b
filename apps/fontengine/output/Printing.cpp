#include "output/Printing.h"

#include <Utils/Utils.h>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <ostream>

namespace Vell::Tool {

void printProperty(std::ostream& out, std::string_view name, const std::string& value) {
    fmt::print(out, "{:<19}{}\n", fmt::format("{}:", name), value);
}

std::string formatCodePoint(unsigned int codePoint) {
    return fmt::format("U+{:04X}", codePoint);
}

std::string makePrintable(unsigned int codePoint, std::string_view bytes) {
    constexpr unsigned int lastControl = 0x9F;
    const bool isControl = codePoint < ' ' || (codePoint > '~' && codePoint <= lastControl);
    if (isControl) {
        return "";
    }
    return codePoint == replacementCharacter ? "\xEF\xBF\xBD" : std::string(bytes);
}

std::string makeOneLine(std::string text) {
    for (char& c : text) {
        const bool isControl = (c >= 0 && c < ' ') || c == 0x7F;
        c = isControl ? ' ' : c;
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

} // namespace Vell::Tool
