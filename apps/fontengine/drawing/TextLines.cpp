#include "drawing/TextLines.h"

#include <algorithm>

namespace Vell::Tool {

namespace {

/// The number of bytes that fit, at least one character.
std::size_t countFittingBytes(const TextFont& font, std::string_view text, float width) {
    const char* const start = text.data();
    const char* const end = start + text.size();
    const char* position = start;
    if (font.font->countCharsForWidth(position, end, width, font.setting) == 0 && position != end) {
        static_cast<void>(decodeUtf8(position, end));
    }
    return static_cast<std::size_t>(position - start);
}

/// The end of the first line, before a space if possible.
std::size_t findBreak(std::string_view text, std::size_t fitting) {
    if (fitting == text.size() || text[fitting] == ' ') {
        return fitting;
    }
    const std::size_t space = text.rfind(' ', fitting);
    const bool hasWord = space != std::string_view::npos && text.find_first_not_of(' ') < space;
    return hasWord ? space : fitting;
}

std::string_view trimEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

void wrapLine(const TextFont& font, std::string_view text, float width, std::vector<std::string>& lines) {
    for (;;) {
        const std::size_t end = findBreak(text, countFittingBytes(font, text, width));
        const std::size_t next = text.find_first_not_of(' ', end);
        if (next == std::string_view::npos) {
            lines.emplace_back(text.substr(0, end));
            return;
        }
        lines.emplace_back(trimEnd(text.substr(0, end)));
        text.remove_prefix(next);
    }
}

} // namespace

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.emplace_back(text.substr(0, end));
        const bool isPair = text.substr(end, 2) == "\r\n";
        text.remove_prefix(std::min(end + (isPair ? 2 : 1), text.size()));
    }
    if (lines.empty()) {
        lines.emplace_back();
    }
    return lines;
}

std::vector<std::string> wrapText(const TextFont& font, std::string_view text, float width) {
    std::vector<std::string> lines;
    for (const std::string& line : splitLines(text)) {
        wrapLine(font, line, width, lines);
    }
    return lines;
}

} // namespace Vell::Tool
