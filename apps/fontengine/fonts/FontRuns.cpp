#include "fonts/FontRuns.h"

namespace Vell::Tool {

namespace {

bool areSameFace(const TextFont& a, const TextFont& b) {
    return a.font->getFace() == b.font->getFace();
}

void extend(FontRun& run, const CharacterFont& character) {
    run.text = std::string_view(run.text.data(), run.text.size() + character.bytes.size());
}

} // namespace

std::vector<CharacterFont> findCharacterFonts(const TextFont& font, std::string_view text) {
    std::vector<CharacterFont> characters;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        const char* const start = position;
        const unsigned int codePoint = decodeUtf8(position, end);
        characters.push_back({codePoint, std::string_view(start, static_cast<std::size_t>(position - start)),
                              chooseFont(font, codePoint)});
    }
    return characters;
}

std::vector<FontRun> splitIntoFontRuns(const TextFont& font, std::string_view text) {
    std::vector<FontRun> runs;
    float pen = 0.0F;
    for (const CharacterFont& character : findCharacterFonts(font, text)) {
        if (!runs.empty() && areSameFace(runs.back().font, character.font)) {
            extend(runs.back(), character);
        } else {
            runs.push_back({character.bytes, character.font, pen});
        }
        const boost::string_ref bytes(character.bytes.data(), character.bytes.size());
        pen += font.font->getTextWidth(bytes, font.setting);
    }
    return runs;
}

} // namespace Vell::Tool
