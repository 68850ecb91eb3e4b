#include "specimen/SampleText.h"

#include "fonts/FaceFacts.h"

#include <Utils/Utils.h>

#include <algorithm>

namespace Vell::Tool {

namespace {

template <class Predicate>
bool allOf(const std::string& text, const Predicate& isFine) {
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        if (!isFine(decodeUtf8(position, end))) {
            return false;
        }
    }
    return true;
}

bool isDrawable(unsigned int code) {
    constexpr unsigned int firstBeyondControls = 0xA1;
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return ((code > ' ' && code <= '~') || code >= firstBeyondControls) && !isSurrogate;
}

std::string takeFirstCharacters(const Gfx::CharMap& map) {
    constexpr int wanted = 24;
    std::string text;
    int taken = 0;
    for (const CodeRange& range : findMappedRanges(map)) {
        for (unsigned int code = range.first; code <= range.last && taken < wanted; ++code) {
            if (isDrawable(code)) {
                text += encodeUtf8(code);
                ++taken;
            }
        }
    }
    return text;
}

} // namespace

const std::vector<ScriptSample>& getScriptSamples() {
    static const std::vector<ScriptSample> samples = {
        {"Latin", "Sphinx of black quartz, judge my vow"},
        {"Latin with marks", "Příliš žluťoučký kůň, façade, smörgåsbord"},
        {"Greek", "Θάλασσα, ουρανός και γη"},
        {"Cyrillic", "Съешь ещё этих мягких булок"},
        {"Armenian", "Բարեւ աշխարհ"},
        {"Georgian", "გამარჯობა მსოფლიო"},
        {"Hebrew", "שלום עולם"},
        {"Arabic", "مرحبا بالعالم"},
        {"Devanagari", "नमस्ते जगत"},
        {"Bengali", "নমস্কার"},
        {"Gurmukhi", "ਸਤ ਸ੍ਰੀ ਅਕਾਲ"},
        {"Gujarati", "નમસ્તે"},
        {"Tamil", "வணக்கம்"},
        {"Telugu", "నమస్కారం"},
        {"Kannada", "ನಮಸ್ಕಾರ"},
        {"Malayalam", "നമസ്കാരം"},
        {"Sinhala", "ආයුබෝවන්"},
        {"Thai", "สวัสดีชาวโลก"},
        {"Lao", "ສະບາຍດີ"},
        {"Khmer", "សួស្តី"},
        {"Ethiopic", "ሰላም ለዓለም"},
        {"Hangul", "안녕하세요 세계"},
        {"Kana", "いろはにほへと カタカナ"},
        {"Han", "天地玄黃宇宙洪荒"},
        {"Mathematics", "∀x∈ℝ: ∑√∞ ≤ ∫ ≠ ⊂"},
        {"Symbols", "☀ ☂ ☯ ♞ ♫ ⚙ ✈"},
        {"Emoji", "😀😍🚀🌍🍎🐧👩🏽‍🚀🇪🇺"},
    };
    return samples;
}

std::string chooseSample(const TextFont& font) {
    const auto& samples = getScriptSamples();
    const auto covered = std::find_if(samples.begin(), samples.end(), [&](const ScriptSample& sample) {
        return coversText(font, sample.text);
    });
    return covered != samples.end()
               ? covered->text
               : takeFirstCharacters(font.font->getFace()->getBasicMetrics().getCharMap());
}

std::string chooseShortSample(const TextFont& font) {
    constexpr const char* tallAndDeep = "Hxg";
    constexpr std::size_t fewBytes = 6;
    if (coversText(font, tallAndDeep)) {
        return tallAndDeep;
    }
    const std::string sample = chooseSample(font);
    std::size_t end = std::min(sample.size(), fewBytes);
    constexpr unsigned int trailMask = 0xC0;
    constexpr unsigned int trail = 0x80;
    while (end < sample.size() && (static_cast<unsigned char>(sample[end]) & trailMask) == trail) {
        ++end; // do not split a character
    }
    return sample.substr(0, end);
}

bool coversText(const TextFont& font, const std::string& text) {
    return allOf(text, [&](unsigned int code) { return hasGlyph(font, code); });
}

unsigned int getFirstLetter(const std::string& text) {
    unsigned int letter = 0;
    allOf(text, [&](unsigned int code) {
        letter = code;
        return code == ' '; // continue after a space
    });
    return letter == ' ' ? 0 : letter;
}

std::string encodeUtf8(unsigned int codePoint) {
    constexpr unsigned int trail = 0x80;
    constexpr unsigned int six = 0x3F;
    const auto byte = [](unsigned int value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (codePoint < 0x80) {
        return {byte(codePoint)};
    }
    if (codePoint < 0x800) {
        return {byte(0xC0U | codePoint >> 6U), byte(trail | (codePoint & six))};
    }
    if (codePoint < 0x10000) {
        return {byte(0xE0U | codePoint >> 12U), byte(trail | (codePoint >> 6U & six)),
                byte(trail | (codePoint & six))};
    }
    return {byte(0xF0U | codePoint >> 18U), byte(trail | (codePoint >> 12U & six)),
            byte(trail | (codePoint >> 6U & six)), byte(trail | (codePoint & six))};
}

} // namespace Vell::Tool
