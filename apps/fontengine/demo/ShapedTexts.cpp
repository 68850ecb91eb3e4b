#include "demo/ShapedTexts.h"

#include <FontEngine/FontEngine.h>

#include <string_view>
#include <utility>

namespace Vell::Tool {

namespace {

using FontEngine::describeFont;
using FontEngine::FontStyle;
using TextLayout::TextColor;
using TextLayout::TextStyle;

const TextColor subdued(110, 110, 110, 255);
const TextColor blue(20, 60, 160, 255);
const TextColor green(10, 110, 60, 255);
const TextColor red(170, 40, 30, 255);
const TextColor brown(150, 80, 0, 255);

class TextWriter {
public:
    TextWriter& add(std::string_view part, const TextStyle& style) {
        _text.spans.push_back({_text.text.size(), _text.text.size() + part.size(), style});
        _text.text += part;
        return *this;
    }
    StyledText finish() { return std::move(_text); }

private:
    StyledText _text;
};

struct ScriptLine {
    const char* name;
    const char* language;
    const char* text;
};

constexpr ScriptLine scriptLines[] = {
    {"Latin", "en", "AVATAR, To, office, fjord, e\u0301\u0323"},
    {"Arabic", "ar", "مرحبا بالعالم، سنة ٢٠٢٦"},
    {"Hebrew", "he", "שָׁלוֹם עולם (120 שקלים, 5%)"},
    {"Devanagari", "hi", "नमस्ते, क्षत्रिय, र्क, हिन्दी"},
    {"Tamil", "ta", "வணக்கம், கொடு, ஸ்ரீ"},
    {"Thai", "th", "สวัสดีชาวโลก น้ำ กี่"},
    {"Khmer", "km", "សួស្តីពិភពលោក ខ្ញុំ"},
    {"Mongolian", "mn", "ᠮᠣᠩᠭᠣᠯ ᠪᠢᠴᠢᠭ"},
    {"Japanese", "ja", "「縦棒｜」、ラーメン。骨と直"},
    {"Korean", "ko", "안녕하세요 \u1112\u1161\u11AB\u1100\u1173\u11AF"},
};

} // namespace

StyledText makeScriptLines() {
    constexpr float size = 18.0F;
    const TextStyle name = TextStyle(describeFont("DejaVu Sans", 11.0F)).setColor(subdued);
    const TextStyle line(describeFont("DejaVu Sans", size));
    TextWriter writer;
    for (const ScriptLine& script : scriptLines) {
        writer.add(&script == scriptLines ? "" : "\n", line)
            .add(std::string(script.name) + "\t", name)
            .add(script.text, TextStyle(line).setLanguage(script.language));
    }
    return writer.finish();
}

StyledText makeMixedParagraph() {
    constexpr float size = 16.0F;
    const TextStyle body(describeFont("DejaVu Serif", size));
    const TextStyle bold(describeFont("DejaVu Serif", size, FontStyle{}.setBold()));
    const TextStyle italic(describeFont("DejaVu Serif", size, FontStyle{}.setItalic()));
    const auto speak = [&](const char* language, const TextColor& color) {
        return TextStyle(body).setLanguage(language).setColor(color);
    };
    return TextWriter()
        .add("A justified paragraph ", TextStyle(bold).setColor(blue))
        .add("may quote Arabic, ", body)
        .add("يولد جميع الناس أحرارًا", speak("ar", green))
        .add(", and Hebrew with a number in it, ", body)
        .add("הספר עולה 120 שקלים", speak("he", red))
        .add(", ", body)
        .add("underlined", TextStyle(italic).setUnderlined())
        .add(" or ", body)
        .add("struck out", TextStyle(body).setStruckOut())
        .add(". It goes on in Devanagari, ", body)
        .add("सभी मनुष्य जन्म से स्वतन्त्र हैं", speak("hi", brown))
        .add(", and in Japanese, which has no spaces: ", body)
        .add("すべての人間は、生まれながらにして自由である。", TextStyle(body).setLanguage("ja"))
        .add(" Its last line stands at the start.", body)
        .finish();
}

StyledText makeEmojiLines() {
    TextWriter writer;
    writer.add("Joined: 👩🏽‍🚀 👨‍👩‍👧 🏳️‍🌈, flags: 🇪🇺 🇯🇵 "
               "🏴󠁧󠁢󠁳󠁣󠁴󠁿, "
               "keycaps: "
               "1️⃣ #️⃣, text: ❤︎, emoji: ❤️\n",
               describeFont("DejaVu Sans", 12.0F));
    writer.add("😀 😍 🚀 🌍 🍎 🐧 🎉 and text between 👍🏿\n",
               describeFont("DejaVu Sans", 20.0F));
    writer.add("😀🚀🌍🍎🐧", describeFont("DejaVu Sans", 64.0F));
    return writer.finish();
}

std::vector<StyledText> makeNarrowTexts() {
    constexpr float size = 14.0F;
    const TextStyle body(describeFont("DejaVu Serif", size));
    const auto write = [&](const char* text, const char* language) {
        return TextWriter().add(text, TextStyle(body).setLanguage(language)).finish();
    };
    return {
        write("In narrow columns, soft hyphens let in\u00ADcom\u00ADpre\u00ADhen\u00ADsi\u00ADble words end "
              "lines. Others are broken anywhere: Donaudampfschifffahrtsgesellschaft.",
              "en"),
        write("يولد جميع الناس أحرارًا متساوين في الكرامة والحقوق، وقد وهبوا عقلًا وضميرًا.", "ar"),
        write("すべての人間は、生まれながらにして自由であり、かつ、尊厳と権利とについて平等である。", "ja")};
}

} // namespace Vell::Tool
