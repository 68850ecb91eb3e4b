#include <fuzz/support/InputFile.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace Vell::Fuzz {

namespace {

unsigned int toDigit(char character) {
    const std::string digits = "0123456789abcdef";
    const std::size_t digit =
        digits.find(static_cast<char>(std::tolower(static_cast<unsigned char>(character))));
    if (digit == std::string::npos) {
        throw std::invalid_argument(std::string("not a hexadecimal digit: ") + character);
    }
    return static_cast<unsigned int>(digit);
}

std::string stripComment(const std::string& line) {
    std::string digits = line.substr(0, line.find('#'));
    digits.erase(std::remove_if(digits.begin(), digits.end(),
                                [](unsigned char character) { return std::isspace(character) != 0; }),
                 digits.end());
    return digits;
}

} // namespace

Testing::Bytes parseHex(const std::string& text) {
    std::istringstream lines(text);
    Testing::Bytes bytes;
    for (std::string line; std::getline(lines, line);) {
        const std::string digits = stripComment(line);
        if (digits.size() % 2 != 0) {
            throw std::invalid_argument("single hexadecimal digit: " + line);
        }
        for (std::size_t i = 0; i < digits.size(); i += 2) {
            bytes.push_back(static_cast<unsigned char>(toDigit(digits[i]) << 4 | toDigit(digits[i + 1])));
        }
    }
    return bytes;
}

Testing::Bytes readInput(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return file.extension() == ".hex" ? parseHex(content) : Testing::Bytes(content.begin(), content.end());
}

std::vector<std::filesystem::path> listInputs(const std::filesystem::path& path) {
    if (!std::filesystem::is_directory(path)) {
        return {path};
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace Vell::Fuzz
