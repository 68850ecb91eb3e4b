#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Testing {

/// A line of a conformance test of Unicode, without its comment, and its number.
struct ConformanceLine {
    std::string text;
    unsigned int number;
};

/// The lines that hold data of a file below the folder of Debian's package unicode-data. Fails the running
/// test if the file cannot be read.
std::vector<ConformanceLine> readConformanceFile(const std::string& name);

std::vector<std::string> split(std::string_view text, char separator);

/// Splits at white space, and leaves out what is empty.
std::vector<std::string> splitWords(std::string_view text);

void appendUtf8(std::string& text, unsigned int codePoint);

/// Code points in hexadecimal, with white space between.
std::string makeText(std::string_view codePoints);

/// A line of GraphemeBreakTest.txt or LineBreakTest.txt.
struct DividedText {
    std::string text;
    std::vector<std::size_t> boundaries; ///< the offsets of the signs of division, in bytes
};

DividedText parseDividedText(const std::string& line);

} // namespace Vell::Testing
