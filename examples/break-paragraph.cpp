// A paragraph broken into lines: countCharsForWidth says how many characters fit, the words decide where the
// line ends. The program prints each line behind its width, and draws the paragraph if it is given a file.
//
//     break-paragraph [WIDTH [TEXT [FILE.png]]]

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <cmath>
#include <exception>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace Vell;

namespace {

constexpr const char* sample =
    "Breaking a paragraph is the work of whoever draws it: the library measures, and counts the characters "
    "that a line has room for. A word that is wider than the line, such as "
    "Donaudampfschifffahrtselektrizitätenhauptbetriebswerkbauunterbeamtengesellschaft, is cut where it must.";

using Style = NNPtr<const Gfx::ExtFontInfo>;

/// How many bytes of `text` fit: whole characters, and at least one, or a narrow column would never end.
std::size_t countFittingBytes(const Gfx::FontMetrics& font, const Style& style, std::string_view text,
                              float width) {
    const char* position = text.data();
    const char* const end = position + text.size();
    if (font.countCharsForWidth(position, end, width, style) == 0) {
        decodeUtf8(position, end);
    }
    return static_cast<std::size_t>(position - text.data());
}

/// Where the first line of `text` ends: before the last space that fits, or inside a word that is wider than
/// the line.
std::size_t findLineEnd(const Gfx::FontMetrics& font, const Style& style, std::string_view text,
                        float width) {
    const std::size_t fitting = countFittingBytes(font, style, text, width);
    const std::size_t space = fitting == text.size() ? fitting : text.rfind(' ', fitting);
    return space == std::string_view::npos ? fitting : space;
}

struct Line {
    std::string text;
    float width;
};

std::vector<Line> breakLines(const Gfx::FontMetrics& font, const Style& style, std::string_view text,
                             float width) {
    std::vector<Line> lines;
    while (text.find_first_not_of(' ') != std::string_view::npos) {
        text.remove_prefix(text.find_first_not_of(' ')); // no line begins with the space that broke it
        const std::string line(text.substr(0, findLineEnd(font, style, text, width)));
        lines.push_back({line, font.getTextWidth(line, style)});
        text.remove_prefix(line.size());
    }
    return lines;
}

void printLines(const std::vector<Line>& lines) {
    std::cout << std::fixed << std::setprecision(2);
    for (const Line& line : lines) {
        std::cout << std::setw(8) << line.width << "  " << line.text << '\n';
    }
}

/// Draws the lines below each other, and the edge that they were broken at.
void drawLines(const std::vector<Line>& lines, const FontEngine::FontFactory& factory, const Style& style,
               float width, const char* file) {
    constexpr float margin = 10.0F;
    const FontEngine::TextSize size = FontEngine::measureText(factory, "", style);
    const float lineHeight = std::ceil(size.height);
    const float height = lineHeight * static_cast<float>(lines.size());
    const auto surface = CairoAdapter::makeImageSurface(static_cast<int>(std::ceil(width + 2.0F * margin)),
                                                        static_cast<int>(height + 2.0F * margin));
    CairoAdapter::CairoPainter painter(surface.get());
    cairo_set_source_rgb(painter.getContext(), 1.0, 1.0, 1.0);
    cairo_paint(painter.getContext());
    cairo_set_source_rgb(painter.getContext(), 0.8, 0.3, 0.2);
    cairo_rectangle(painter.getContext(), margin + width, margin, 1.0, height);
    cairo_fill(painter.getContext());

    CairoAdapter::CairoGlyphPainter glyphPainter(painter, painter.getColor());
    painter.translate({margin, std::round(margin + size.ascent)});
    for (const Line& line : lines) {
        FontEngine::drawRasterText(factory, line.text, style, {painter, glyphPainter, painter.getColor()});
        painter.translate({0.0F, lineHeight});
    }
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png(surface.get(), file));
}

void setParagraph(std::string_view text, float width, const char* file) {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const Style style = FontEngine::describeFont("DejaVu Serif", 16.0F);
    const auto font = factory->getFontMetrics(style->getFontInfo()); // looked up once for all lines
    const std::vector<Line> lines = breakLines(*font, style, text, width);
    printLines(lines);
    if (file != nullptr) {
        drawLines(lines, *factory, style, width, file);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        setParagraph(argc > 2 ? argv[2] : sample, argc > 1 ? std::stof(argv[1]) : 300.0F,
                     argc > 3 ? argv[3] : nullptr);
        return 0;
    } catch (const std::invalid_argument&) {
        std::cerr << "break-paragraph: the width must be a number\n";
    } catch (const std::exception& error) {
        std::cerr << "break-paragraph: " << error.what() << '\n';
    }
    return 1;
}
