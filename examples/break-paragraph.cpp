// A paragraph broken into lines: countCharsForWidth says how many characters fit, the words decide where the
// line ends. Prints each line behind its width.
//
//     break-paragraph [WIDTH [TEXT]]

#include <FontEngine/FontEngine.h>

#include <exception>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>

using namespace Vell;

namespace {

constexpr const char* sample =
    "Breaking a paragraph is the work of whoever draws it: the library measures, and counts the characters "
    "that a line has room for. A word that is wider than the line, such as "
    "Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft, is cut where it must.";

using Style = NNPtr<const Gfx::ExtFontInfo>;

/// The bytes of `text` that fit: whole characters, and at least one of them, or a narrow column would never
/// end.
std::size_t countFittingBytes(const Gfx::FontMetrics& font, const Style& style, std::string_view text,
                              float width) {
    const char* position = text.data();
    const char* const end = position + text.size();
    if (font.countCharsForWidth(position, end, width, style) == 0) {
        decodeUtf8(position, end);
    }
    return static_cast<std::size_t>(position - text.data());
}

/// Where the first line of `text` ends: in front of the last space that can be reached, or inside of a word
/// that is wider than the line.
std::size_t findLineEnd(const Gfx::FontMetrics& font, const Style& style, std::string_view text,
                        float width) {
    const std::size_t fitting = countFittingBytes(font, style, text, width);
    const std::size_t space = fitting == text.size() ? fitting : text.rfind(' ', fitting);
    return space == std::string_view::npos ? fitting : space;
}

void printLines(std::string_view text, float width) {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const Style style = FontEngine::describeFont("DejaVu Serif", 16.0F);
    const auto font = factory->getFontMetrics(style->getFontInfo()); // looked up once for all lines

    std::cout << std::fixed << std::setprecision(2);
    while (text.find_first_not_of(' ') != std::string_view::npos) {
        text.remove_prefix(
            text.find_first_not_of(' ')); // no line begins with the space that it was broken at
        const std::string line(text.substr(0, findLineEnd(*font, style, text, width)));
        std::cout << std::setw(8) << font->getTextWidth(line, style) << "  " << line << '\n';
        text.remove_prefix(line.size());
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        printLines(argc > 2 ? argv[2] : sample, argc > 1 ? std::stof(argv[1]) : 300.0F);
        return 0;
    } catch (const std::invalid_argument&) {
        std::cerr << "break-paragraph: the width must be a number\n";
    } catch (const std::exception& error) {
        std::cerr << "break-paragraph: " << error.what() << '\n';
    }
    return 1;
}
