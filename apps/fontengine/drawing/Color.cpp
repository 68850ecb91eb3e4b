#include "drawing/Color.h"

#include "Errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace Vell::Tool {

namespace {

struct NamedColor {
    std::string_view name;
    Color color;
};

constexpr NamedColor namedColors[] = {
    {"aqua", {0, 255, 255, 255}},    {"black", {0, 0, 0, 255}},        {"blue", {0, 0, 255, 255}},
    {"cyan", {0, 255, 255, 255}},    {"fuchsia", {255, 0, 255, 255}},  {"gray", {128, 128, 128, 255}},
    {"green", {0, 128, 0, 255}},     {"grey", {128, 128, 128, 255}},   {"lime", {0, 255, 0, 255}},
    {"magenta", {255, 0, 255, 255}}, {"maroon", {128, 0, 0, 255}},     {"navy", {0, 0, 128, 255}},
    {"olive", {128, 128, 0, 255}},   {"orange", {255, 165, 0, 255}},   {"purple", {128, 0, 128, 255}},
    {"red", {255, 0, 0, 255}},       {"silver", {192, 192, 192, 255}}, {"teal", {0, 128, 128, 255}},
    {"transparent", {0, 0, 0, 0}},   {"white", {255, 255, 255, 255}},  {"yellow", {255, 255, 0, 255}},
};

char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool areEqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return toLower(x) == toLower(y); });
}

std::optional<Color> findNamed(std::string_view text) {
    const auto* found = std::find_if(std::begin(namedColors), std::end(namedColors), [&](const auto& named) {
        return areEqualIgnoringCase(named.name, text);
    });
    return found != std::end(namedColors) ? std::optional<Color>(found->color) : std::nullopt;
}

std::optional<unsigned int> readDigit(char c) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto value = digits.find(toLower(c));
    return value != std::string_view::npos ? std::optional<unsigned int>(static_cast<unsigned int>(value))
                                           : std::nullopt;
}

/// A channel has two digits, or one that counts twice.
std::optional<Color> readHex(std::string_view digits) {
    const std::size_t width = digits.size() > 4 ? 2 : 1;
    const std::size_t count = digits.size() / width;
    if (digits.size() % width != 0 || count < 3 || count > 4) {
        return std::nullopt;
    }
    std::array<unsigned char, 4> channels{0, 0, 0, 255};
    for (std::size_t i = 0; i < count; ++i) {
        const auto high = readDigit(digits[i * width]);
        const auto low = readDigit(digits[i * width + width - 1]);
        if (!high || !low) {
            return std::nullopt;
        }
        channels[i] = static_cast<unsigned char>(*high * 16 + *low);
    }
    return Color(channels[0], channels[1], channels[2], channels[3]);
}

} // namespace

Color parseColor(std::string_view text) {
    const auto color = !text.empty() && text.front() == '#' ? readHex(text.substr(1)) : findNamed(text);
    if (!color) {
        throw UsageError(
            fmt::format("'{}' is no colour: give #rgb, #rrggbb, #rrggbbaa or a name such as navy", text));
    }
    return *color;
}

std::string listColorNames() {
    constexpr std::size_t lineLength = 80;
    constexpr std::size_t commas = 3; // a comma and a space before the name, a comma after it
    std::string list;
    std::size_t lineStart = 0;
    for (const NamedColor& named : namedColors) {
        if (!list.empty()) {
            const bool isFull = list.size() - lineStart + named.name.size() + commas > lineLength;
            list += isFull ? ",\n" : ", ";
            lineStart = isFull ? list.size() : lineStart;
        }
        list += named.name;
    }
    return list;
}

} // namespace Vell::Tool
