#include "WrapText.h"

#include "InputText.h"

#include <algorithm>

namespace Vell::Tool {

namespace {

/// The bytes that fit, one character at least.
std::size_t countFittingBytes(const TextFont& font, std::string_view text, float width) {
    const char* const start = text.data();
    const char* const end = start + text.size();
    const char* position = start;
    if (font.font->countCharsForWidth(position, end, width, font.setting) == 0 && position != end) {
        static_cast<void>(decodeUtf8(position, end));
    }
    return static_cast<std::size_t>(position - start);
}

/// Where the line ends that begins the text: in front of a space if it can be.
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

std::vector<std::string> wrapText(const TextFont& font, std::string_view text, float width) {
    std::vector<std::string> lines;
    for (const std::string& line : splitLines(text)) {
        wrapLine(font, line, width, lines);
    }
    return lines;
}

} // namespace Vell::Tool
