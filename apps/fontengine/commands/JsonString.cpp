#include "commands/JsonString.h"

#include <Utils/Public/Utf8.h>

#include <fmt/format.h>

#include <cstddef>

namespace Vell::Tool {

namespace {

constexpr std::string_view whiteSpace = " \t\r";

void appendUtf8(std::string& text, unsigned int codePoint) {
    const auto append = [&text](unsigned int byte) { text.push_back(static_cast<char>(byte)); };
    const auto appendTrail = [&](unsigned int shift) { append(0x80U | (codePoint >> shift & 0x3FU)); };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0U | codePoint >> 6U);
        appendTrail(0);
    } else if (codePoint < 0x10000) {
        append(0xE0U | codePoint >> 12U);
        appendTrail(6);
        appendTrail(0);
    } else {
        append(0xF0U | codePoint >> 18U);
        appendTrail(12);
        appendTrail(6);
        appendTrail(0);
    }
}

bool isHighSurrogate(unsigned int unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(unsigned int unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::optional<unsigned int> readHexDigit(char digit) {
    if (digit >= '0' && digit <= '9') {
        return static_cast<unsigned int>(digit - '0');
    }
    const auto lower = static_cast<char>(digit | 0x20);
    if (lower >= 'a' && lower <= 'f') {
        return static_cast<unsigned int>(lower - 'a') + 10U;
    }
    return std::nullopt;
}

/// Reads what stands between the quotes.
class StringReader {
public:
    explicit StringReader(std::string_view rest)
        : _rest(rest) {}

    std::optional<std::string> read() {
        std::string text;
        while (!_rest.empty()) {
            const char character = take();
            const bool isControl = static_cast<unsigned char>(character) < 0x20;
            if (character == '"' || isControl || (character == '\\' && !readEscape(text))) {
                return std::nullopt;
            }
            if (character != '\\') {
                text.push_back(character);
            }
        }
        return text;
    }

private:
    char take() {
        const char character = _rest.front();
        _rest.remove_prefix(1);
        return character;
    }

    bool readEscape(std::string& text) {
        constexpr std::string_view letters = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        if (_rest.empty()) {
            return false;
        }
        const char letter = take();
        if (letter == 'u') {
            return readCodePoint(text);
        }
        const std::size_t index = letters.find(letter);
        if (index == std::string_view::npos) {
            return false;
        }
        text.push_back(meanings[index]);
        return true;
    }

    bool readCodePoint(std::string& text) {
        const std::optional<unsigned int> unit = readUnit(_rest);
        if (!unit) {
            return false;
        }
        _rest.remove_prefix(4);
        appendUtf8(text, isHighSurrogate(*unit)  ? joinWithNext(*unit)
                         : isLowSurrogate(*unit) ? replacementCharacter
                                                 : *unit);
        return true;
    }

    unsigned int joinWithNext(unsigned int high) {
        if (_rest.substr(0, 2) != "\\u") {
            return replacementCharacter;
        }
        const std::optional<unsigned int> low = readUnit(_rest.substr(2));
        if (!low || !isLowSurrogate(*low)) {
            return replacementCharacter;
        }
        _rest.remove_prefix(6);
        return 0x10000U + ((high - 0xD800U) << 10U) + (*low - 0xDC00U);
    }

    static std::optional<unsigned int> readUnit(std::string_view digits) {
        if (digits.size() < 4) {
            return std::nullopt;
        }
        unsigned int unit = 0;
        for (const char digit : digits.substr(0, 4)) {
            const std::optional<unsigned int> value = readHexDigit(digit);
            if (!value) {
                return std::nullopt;
            }
            unit = unit << 4U | *value;
        }
        return unit;
    }

    std::string_view _rest;
};

} // namespace

std::optional<std::string> parseJsonString(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(whiteSpace);
    const std::size_t end = line.find_last_not_of(whiteSpace);
    if (begin == std::string_view::npos || begin == end || line[begin] != '"' || line[end] != '"') {
        return std::nullopt;
    }
    return StringReader(line.substr(begin + 1, end - begin - 1)).read();
}

std::string makeJsonString(std::string_view text) {
    std::string json = "\"";
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        const char32_t character = decodeUtf8(position, end);
        if (character < ' ') {
            json += fmt::format("\\u{:04x}", static_cast<unsigned int>(character));
            continue;
        }
        if (character == '"' || character == '\\') {
            json.push_back('\\');
        }
        appendUtf8(json, character);
    }
    return json + '"';
}

} // namespace Vell::Tool
