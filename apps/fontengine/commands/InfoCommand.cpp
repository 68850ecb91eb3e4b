#include "commands/Commands.h"
#include "fonts/FaceFacts.h"
#include "fonts/FontOrigin.h"
#include "fonts/FontSource.h"
#include "output/Printing.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <cmath>
#include <ostream>
#include <string>
#include <vector>

namespace Vell::Tool {

namespace {

void printFace(const FontEngine::Font& font, const RecordingFontLoader& loader, std::ostream& out) {
    const FontEngine::FontFace& face = *font.getFace();
    const FT_FaceRec& record = *face.getHandle();
    const auto yesOrNo = [](bool value) { return value ? "yes" : "no"; };
    printProperty(out, "family", getFamilyName(face));
    printProperty(out, "style", getStyleName(face));
    printProperty(out, "synthesised", describeSynthesis(face.getTransform()));
    printProperty(out, "symbol font", yesOrNo(FontLoaders::isSymbolicFont(getFamilyName(face))));
    printProperty(out, "outlines", yesOrNo(FT_IS_SCALABLE(&record)));
    printProperty(out, "faces in the file", fmt::format("{}", countFaces(font, loader)));
    printProperty(out, "glyphs", fmt::format("{}", record.num_glyphs));
    printProperty(out, "units per em", fmt::format("{}", getUnitsPerEm(face)));
}

/// Rounds away the noise of single precision, in which differences of metrics are seldom exactly 0. Fonts
/// that consist of bitmaps have none.
std::string printLength(float length) {
    constexpr double precision = 1e5;
    if (!std::isfinite(length)) {
        return "none";
    }
    return fmt::format("{:.7g}", std::round(static_cast<double>(length) * precision) / precision + 0.0);
}

/// Prints the library's value, and says so where the file gives none.
std::string printCapHeight(const FontEngine::Font& font) {
    const float capHeight = font.getCapHeight();
    const char* const choice = capHeight == 0.0F ? "" : ": the ascent";
    const std::string remark =
        hasCapHeight(*font.getFace()) ? "" : fmt::format(" (none in the file{})", choice);
    return printLength(capHeight) + remark;
}

void printMetrics(const FontEngine::Font& font, std::ostream& out) {
    const struct {
        const char* name;
        std::string value;
    } lengths[] = {
        {"size", printLength(font.getFontSize())},
        {"height", printLength(font.getHeight())},
        {"ascent", printLength(font.getAscent())},
        {"descent", printLength(font.getDescent())},
        {"leading", printLength(font.getLeading())},
        {"cap height", printCapHeight(font)},
        {"strike-out", printLength(font.getStrikeOutPosition())},
    };
    for (const auto& length : lengths) {
        printProperty(out, length.name, length.value);
    }
}

/// Prints the axes of a variable font, and the names of its instances.
void printVariations(const FontBytes& wholeFont, std::ostream& out) {
    const FontLoaders::FontVariations variations = FontLoaders::readVariations(wholeFont);
    for (const FontLoaders::FontAxis& axis : variations.axes) {
        printProperty(out, ("axis " + axis.tag).c_str(),
                      fmt::format("{:g} to {:g}, {:g} by default{}", axis.minimum, axis.maximum,
                                  axis.defaultValue, axis.name.empty() ? "" : " (" + axis.name + ")"));
    }
    std::vector<std::string> names;
    for (const FontLoaders::NamedInstance& instance : variations.instances) {
        names.push_back(instance.name);
    }
    if (!names.empty()) {
        printProperty(out, "named instances", fmt::format("{}", fmt::join(names, ", ")));
    }
}

void printCharacters(const Gfx::CharMap& map, bool listsThem, std::ostream& out) {
    const std::vector<CodeRange> ranges = findMappedRanges(map);
    printProperty(out, "mapped characters", fmt::format("{} in {} ranges", map.size(), ranges.size()));
    if (!listsThem) {
        return;
    }
    for (const CodeRange& range : ranges) {
        const std::string first = formatCodePoint(range.first);
        fmt::print(out, "  {}\n",
                   range.first == range.last ? first : first + ".." + formatCodePoint(range.last));
    }
}

void printReasons(const FontEngine::Font& font, const FontSource& source, std::ostream& out) {
    printOrigin(font, *source.getLoader(), out);
    printQuestions(*source.getLoader(), {}, out);
}

} // namespace

void printInfo(const InfoOptions& options, std::ostream& out) {
    const FontSource source(options.familyOrFile, options.variations);
    const TextFont textFont = source.makeFont(options.isBold, options.isItalic, options.size);
    const FontEngine::Font& font = *textFont.font;
    printFace(font, *source.getLoader(), out);
    printMetrics(font, out);
    printVariations(source.readWholeFont(font), out);
    printCharacters(font.getFace()->getBasicMetrics().getCharMap(), options.listsCharacters, out);
    if (options.explains) {
        printReasons(font, source, out);
    }
}

} // namespace Vell::Tool
