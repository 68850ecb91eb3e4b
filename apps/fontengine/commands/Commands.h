#pragma once

#include "commands/InputText.h"
#include "drawing/Color.h"
#include "drawing/TextPaint.h"
#include "fonts/ShapingRequest.h"
#include "fonts/TextFont.h"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

/// The sub-commands. They take options that are already read, and throw ToolError and the exceptions of the
/// libraries; UsageError for options that contradict each other.
namespace Vell::Tool {

/// What the options say about the lines of a shaped text, in the words of the command line.
struct LayoutRequest {
    ShapingRequest shaping = {};
    std::optional<float> width = std::nullopt; ///< in units; if none, lines end only where the text says so
    std::string alignment = "start";           ///< or "end", "center" or "justify"
};

struct RenderOptions {
    TextSource source;
    std::string output;
    FontRequest font;
    Color color = black;
    Color background = white;
    float pixelRatio = 1.0F;
    float degrees = 0.0F; ///< clockwise
    float scale = 1.0F;
    std::optional<PainterKind> painter;  ///< if none is given, the format decides
    std::optional<LayoutRequest> layout; ///< if there is none, each character is one glyph
};

struct InfoOptions {
    std::string familyOrFile;
    std::string variations = {}; ///< as FontLoaders::parseVariations reads them
    bool isBold = false;
    bool isItalic = false;
    float size = 1.0F;
    bool listsCharacters = false;
    bool explains = false;
};

struct FallbackOptions {
    TextSource source;
    FontRequest font;
    std::string language = {}; ///< for the coverage; a BCP 47 tag, or empty
    bool explains = false;
};

struct CacheStatsOptions {
    TextSource source;
    FontRequest font;
    float pixelRatio = 1.0F;
    std::optional<PainterKind> painter; ///< if none is given, both
    unsigned long maxFaces = 0;         ///< as FontFactory::reset takes these two: 0 means no limit
    unsigned long maxBitmapBytes = 0;
    unsigned long passes = 1; ///< how often the whole text is drawn
    bool printsJson = false;
};

struct CompareOptions {
    std::string first;
    std::string second;
    std::optional<std::string> output; ///< a PNG file for the picture of the differences
};

struct DemoOptions {
    std::optional<std::string> text;
    std::string folder;
};

struct SpecimenOptions {
    std::string familyOrFile;
    std::string variations; ///< as FontLoaders::parseVariations reads them
    std::string folder;
    unsigned short palette = 0; ///< of colour glyphs
};

/// The longest text that is analysed, in bytes.
constexpr std::size_t maxAnalysedBytes = std::size_t{32} << 20U;

/// Prints the JSON document of a text, without a line end.
using TextDescriber = std::function<void(std::string_view, std::ostream&)>;

struct AnalysisOptions {
    TextSource source;
    bool isBatch = false; ///< read texts from standard input instead, a JSON string a line
    std::function<TextDescriber()> makeDescriber; ///< opens the font, if one is needed
};

/// Draws a text into a file.
void render(const RenderOptions& options, std::istream& standardInput);

/// Describes a font, one property a line. `--why` adds the file, the reason for the style, and every question
/// to the font loader, one a line (FontOrigin.h shows their forms); the other lines stay the same.
void printInfo(const InfoOptions& options, std::ostream& out);

/// Prints a line for each character: its code, the character, the face that draws it, and "own", "fallback"
/// or "missing", separated by tabs. Skips line ends and tabs, which no face draws. With `--why`, an empty
/// line follows, then each face that draws with its file and the reason for its style, then every question to
/// the font loader, then the font of each grapheme cluster of the shaped text (CoverageRoad.h).
void printFallback(const FallbackOptions& options, std::istream& standardInput, std::ostream& out);

/// Draws a text line by line off screen and prints the statistics of the factory's caches as a table or as
/// JSON (CacheReport.h shows both). Shows a progress bar on standard error if that is a terminal.
void printCacheStats(const CacheStatsOptions& options, std::istream& standardInput, std::ostream& out);

/// Compares two PNG files of the same size and prints how much they differ; on request, draws where
/// (PictureDifference.h). Returns whether they show the same.
bool comparePictures(const CompareOptions& options, std::ostream& out);

/// Draws demo.png, demo.svg and demo.pdf into a folder, which is made if it does not exist.
void writeDemo(const DemoOptions& options);

/// Writes index.html, a page about a font, into a folder, which is made if it does not exist.
void writeSpecimen(const SpecimenOptions& options);

/// Prints the JSON document of each text on a line of its own.
void printAnalysis(const AnalysisOptions& options, std::istream& standardInput, std::ostream& out);

} // namespace Vell::Tool
