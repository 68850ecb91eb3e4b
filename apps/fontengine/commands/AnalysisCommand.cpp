#include "Errors.h"
#include "commands/Commands.h"
#include "commands/JsonString.h"

#include <fmt/format.h>

#include <istream>
#include <ostream>

namespace Vell::Tool {

namespace {

/// Each of the bytes of a text has at most the six characters of an escape.
constexpr std::size_t maxLineBytes = 6 * maxAnalysedBytes + 2;

/// Reads a line without its end. Returns whether there was one.
bool readLine(std::istream& stream, std::string& line) {
    line.clear();
    std::streambuf& buffer = *stream.rdbuf();
    int character = buffer.sbumpc();
    if (character == EOF) {
        return false;
    }
    for (; character != EOF && character != '\n'; character = buffer.sbumpc()) {
        if (line.size() == maxLineBytes) {
            throw ToolError(fmt::format("a line of standard input is longer than {} bytes", maxLineBytes));
        }
        line.push_back(static_cast<char>(character));
    }
    return true;
}

void printBatch(const TextDescriber& describe, std::istream& standardInput, std::ostream& out) {
    std::string line;
    for (unsigned long number = 1; readLine(standardInput, line); ++number) {
        const std::optional<std::string> text = parseJsonString(line);
        if (!text) {
            throw ToolError(fmt::format("line {} of standard input is not a JSON string", number));
        }
        describe(*text, out);
        out << '\n';
    }
}

} // namespace

void printAnalysis(const AnalysisOptions& options, std::istream& standardInput, std::ostream& out) {
    const TextDescriber describe = options.makeDescriber();
    if (options.isBatch) {
        printBatch(describe, standardInput, out);
    } else {
        describe(readBytes(options.source, standardInput, maxAnalysedBytes), out);
        out << '\n';
    }
}

} // namespace Vell::Tool
