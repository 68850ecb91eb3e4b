#pragma once

#include "commands/InputText.h"
#include "drawing/Color.h"
#include "drawing/TextPaint.h"
#include "fonts/TextFont.h"

#include <iosfwd>
#include <optional>
#include <string>

/// What each sub-command does, from options that are read already. They throw ToolError and the exceptions of
/// the libraries; UsageError for options that contradict each other.
namespace Vell::Tool {

struct RenderOptions {
    TextSource source;
    std::string output;
    FontRequest font;
    Color color = black;
    Color background = white;
    float pixelRatio = 1.0F;
    float degrees = 0.0F; ///< clockwise
    float scale = 1.0F;
    std::optional<PainterKind> painter; ///< the format decides where nothing is said
};

struct InfoOptions {
    std::string familyOrFile;
    bool isBold = false;
    bool isItalic = false;
    float size = 1.0F;
    bool listsCharacters = false;
    bool explains = false;
};

struct FallbackOptions {
    TextSource source;
    FontRequest font;
    bool explains = false;
};

struct CacheStatsOptions {
    TextSource source;
    FontRequest font;
    float pixelRatio = 1.0F;
    std::optional<PainterKind> painter; ///< both where nothing is said
    unsigned long maxFaces = 0;         ///< these two as FontFactory::reset takes them: 0 means no limit
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
    std::string folder;
};

/// Writes a picture of a text.
void render(const RenderOptions& options, std::istream& standardInput);

/// Prints what a font is: one property a line. Where it is to explain (`--why`), three properties follow the
/// others and leave them as they are: the file, the reason for the style, and all that the font loader was
/// asked, one question a line (FontOrigin.h tells their forms).
void printInfo(const InfoOptions& options, std::ostream& out);

/// Prints a line for each character: code, character, the face that draws it, and "own", "fallback" or
/// "missing", separated by tabs. Line ends and tabs, which no face draws, are left out. Where it is to
/// explain
/// (`--why`), an empty line ends these lines; the face, the file and the reason for the style follow for each
/// face that draws, then all that the font loader was asked.
void printFallback(const FallbackOptions& options, std::istream& standardInput, std::ostream& out);

/// Draws a text line by line where nobody sees it and prints how the factory's caches have served: a table,
/// or JSON (CacheReport.h tells both forms). On a terminal standard error shows a bar meanwhile.
void printCacheStats(const CacheStatsOptions& options, std::istream& standardInput, std::ostream& out);

/// Compares two PNG files of one size and prints by how much they differ; draws where, on request
/// (PictureDifference.h tells how). Returns whether they show the same.
bool comparePictures(const CompareOptions& options, std::ostream& out);

/// Writes a specimen as demo.png, demo.svg and demo.pdf into a folder, which is made if need be.
void writeDemo(const DemoOptions& options);

/// Writes a page about a font, index.html, into a folder, which is made if need be.
void writeSpecimen(const SpecimenOptions& options);

} // namespace Vell::Tool
