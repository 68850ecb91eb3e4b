#include "ConformanceFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace Vell::Testing {

std::vector<ConformanceLine> readConformanceFile(const std::string& name) {
    std::ifstream file(FONTENGINE_UNICODE_DATA "/" + name);
    EXPECT_TRUE(file) << name << " is missing: install unicode-data";
    std::vector<ConformanceLine> lines;
    std::string text;
    for (unsigned int number = 1; std::getline(file, text); ++number) {
        text.erase(std::min(text.find('#'), text.size()));
        text.erase(text.find_last_not_of(" \t\r") + 1);
        if (!text.empty()) {
            lines.push_back({text, number});
        }
    }
    return lines;
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> fields(1);
    for (const char character : text) {
        if (character == separator) {
            fields.emplace_back();
        } else {
            fields.back().push_back(character);
        }
    }
    return fields;
}

std::vector<std::string> splitWords(std::string_view text) {
    std::istringstream stream{std::string(text)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

void appendUtf8(std::string& text, unsigned int codePoint) {
    const auto append = [&text](unsigned int byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        append(codePoint);
        return;
    }
    const int trailing = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
    constexpr unsigned int leads[] = {0, 0xC0, 0xE0, 0xF0};
    append(leads[trailing] | codePoint >> static_cast<unsigned int>(6 * trailing));
    for (int i = trailing - 1; i >= 0; --i) {
        append(0x80U | (codePoint >> static_cast<unsigned int>(6 * i) & 0x3FU));
    }
}

namespace {

unsigned int parseHex(const std::string& word) {
    return static_cast<unsigned int>(std::stoul(word, nullptr, 16));
}

} // namespace

std::string makeText(std::string_view codePoints) {
    std::string text;
    for (const std::string& word : splitWords(codePoints)) {
        appendUtf8(text, parseHex(word));
    }
    return text;
}

DividedText parseDividedText(const std::string& line) {
    DividedText divided;
    for (const std::string& word : splitWords(line)) {
        if (word == "\xC3\xB7") { // the sign of division
            divided.boundaries.push_back(divided.text.size());
        } else if (word != "\xC3\x97") { // the sign of multiplication: no boundary
            appendUtf8(divided.text, parseHex(word));
        }
    }
    return divided;
}

} // namespace Vell::Testing
