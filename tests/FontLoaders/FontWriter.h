#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontLoaders::Testing {

/// A family name in one language, given by its Windows language identifier.
struct LocalizedName {
    std::uint16_t language;
    std::u16string text;
};
constexpr std::uint16_t english = 0x0409;
constexpr std::uint16_t japanese = 0x0411;

/// A font to write. Its glyphs are blank; weight and width are OpenType's classes.
struct FontDraft {
    std::vector<LocalizedName> families;
    std::uint16_t weight = 400;
    std::uint16_t width = 5;
    bool italic = false;
    std::vector<std::pair<char32_t, char32_t>> characters = {{U'A', U'Z'}};
    std::optional<int> variableFrom; ///< the default of a weight axis from 100 to 900, with named instances
};

FontDraft makeDraft(std::u16string family, std::uint16_t weight = 400, bool italic = false);

/// The draft as a TrueType file with two blank glyphs.
std::vector<unsigned char> writeFont(const FontDraft& draft);

/// Font files as the faces of one collection.
std::vector<unsigned char> writeCollection(const std::vector<std::vector<unsigned char>>& fonts);

} // namespace Vell::FontLoaders::Testing
