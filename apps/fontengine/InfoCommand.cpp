#include "Commands.h"
#include "Errors.h"
#include "FileFontLoader.h"
#include "FontOrigin.h"
#include "NumberLimits.h"
#include "Properties.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <cmath>
#include <filesystem>
#include <ostream>
#include <vector>

namespace Vell::Tool {

namespace {

struct OpenedFont {
    CheckedPtrImpl<const RecordingFontLoader, false> loader;
    FactoryPtr factory; // the font refers to it weakly
    TextFont font;
};

FontRequest makeRequest(const InfoOptions& options) {
    return {options.familyOrFile, options.isBold, options.isItalic, options.size, 0.0F};
}

/// In the file's own style at least: a bold file has no plain face to show.
OpenedFont openFile(const InfoOptions& options) {
    const auto file = makeNNPtr<const FileFontLoader>(options.familyOrFile);
    const auto loader = makeNNPtr<const RecordingFontLoader>(file);
    const auto factory = FontEngine::FontFactory::create(loader, options.familyOrFile);
    FontRequest request = makeRequest(options);
    request.isBold = request.isBold || file->isBold();
    request.isItalic = request.isItalic || file->isItalic();
    return {loader, factory, makeTextFont(factory, request)};
}

OpenedFont openFamily(const InfoOptions& options) {
    const auto loader =
        makeNNPtr<const RecordingFontLoader>(FontLoaders::createPlatformDefaultFontLoader(defaultFamily));
    const auto factory = FontEngine::FontFactory::create(loader, defaultFamily);
    const FontRequest request = makeRequest(options);
    if (!isInstalled(factory, request)) {
        throw ToolError(
            fmt::format("'{}' is neither an installed font family nor a file", options.familyOrFile));
    }
    return {loader, factory, makeTextFont(factory, request)};
}

/// A path is a file. A plain word is a family, unless there is a file of that name.
OpenedFont open(const InfoOptions& options) {
    std::error_code ignored;
    const std::string& name = options.familyOrFile;
    const bool isPath = name.find('/') != std::string::npos;
    return isPath || std::filesystem::exists(name, ignored) ? openFile(options) : openFamily(options);
}

struct CodeRange {
    unsigned int first;
    unsigned int last;
};

std::vector<CodeRange> findMappedRanges(const Gfx::CharMap& map) {
    constexpr unsigned int endOfUnicode = 0x110000;
    std::vector<CodeRange> ranges;
    for (unsigned int code = 0; code < endOfUnicode; ++code) {
        if (map[code].glyphIndex == 0) {
            continue;
        }
        if (!ranges.empty() && ranges.back().last + 1 == code) {
            ranges.back().last = code;
        } else {
            ranges.push_back({code, code});
        }
    }
    return ranges;
}

void printFace(const FontEngine::FontFace& face, std::ostream& out) {
    const FT_FaceRec& record = *face.getHandle();
    const auto yesOrNo = [](bool value) { return value ? "yes" : "no"; };
    printProperty(out, "family", getFamilyName(face));
    printProperty(out, "style", getStyleName(face));
    printProperty(out, "synthesised", describeSynthesis(face.getTransform()));
    printProperty(out, "symbol font", yesOrNo(FontLoaders::isSymbolicFont(getFamilyName(face))));
    printProperty(out, "outlines", yesOrNo(FT_IS_SCALABLE(&record)));
    printProperty(out, "faces in the file", fmt::format("{}", record.num_faces));
    printProperty(out, "glyphs", fmt::format("{}", record.num_glyphs));
    printProperty(out, "units per em", fmt::format("{}", record.units_per_EM));
}

/// Without the noise of single precision, in which differences of metrics are seldom exactly 0.
std::string printLength(float length) {
    constexpr double precision = 1e5;
    return fmt::format("{:.7g}", std::round(static_cast<double>(length) * precision) / precision + 0.0);
}

void printMetrics(const FontEngine::Font& font, std::ostream& out) {
    const struct {
        const char* name;
        float value;
    } lengths[] = {
        {"size", font.getFontSize()},
        {"height", font.getHeight()},
        {"ascent", font.getAscent()},
        {"descent", font.getDescent()},
        {"leading", font.getLeading()},
        {"cap height", font.getCapHeight()},
        {"strike-out", font.getStrikeOutPosition()},
    };
    for (const auto& length : lengths) {
        printProperty(out, length.name, printLength(length.value));
    }
}

void printCharacters(const Gfx::CharMap& map, bool listsThem, std::ostream& out) {
    const std::vector<CodeRange> ranges = findMappedRanges(map);
    printProperty(out, "mapped characters", fmt::format("{} in {} ranges", map.size(), ranges.size()));
    if (!listsThem) {
        return;
    }
    for (const CodeRange& range : ranges) {
        const std::string first = fmt::format("U+{:04X}", range.first);
        fmt::print(out, "  {}\n",
                   range.first == range.last ? first : fmt::format("{}..U+{:04X}", first, range.last));
    }
}

void printReasons(const OpenedFont& opened, std::ostream& out) {
    printOrigin(*opened.font.font, *opened.loader, out);
    printQuestions(*opened.loader, {}, out);
}

} // namespace

void printInfo(const InfoOptions& options, std::ostream& out) {
    checkLimits(sizeLimits, options.size);
    if (options.familyOrFile.empty()) {
        throw UsageError("the name of the font is empty");
    }
    const OpenedFont opened = open(options);
    const FontEngine::Font& font = *opened.font.font;
    printFace(*font.getFace(), out);
    printMetrics(font, out);
    printCharacters(font.getFace()->getBasicMetrics().getCharMap(), options.listsCharacters, out);
    if (options.explains) {
        printReasons(opened, out);
    }
}

} // namespace Vell::Tool
