#include "RandomParagraphs.h"

#include "HandShaper.h"

#include <FontEngine/FontEngine.h>

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

using Samples = std::vector<const char*>;
using Shape = std::function<NNPtr<const ShapedText>(const std::string&, ParagraphDirection)>;

const Samples handSamples = {"a",      "b",      "W",      " ",      " ",      "fi",      "\u05D0", "\u05D1",
                             "\u05D2", "1",      "2",      "(",      ")",      "e\u0301", "\u4E00", "\u4E8C",
                             "\t",     "\u00AD", "\n",     "\u0627", "\u064E", ".",       ",",      "\u202B",
                             "\u202C", "\u2067", "\u2069", "\u00A0", "\u0E01"};
const Samples installedSamples = {"a",
                                  "To",
                                  "office",
                                  "AV",
                                  " ",
                                  " ",
                                  "fi",
                                  "\u05D0",
                                  "\u05D1\u05B8",
                                  "\u0633",
                                  "12",
                                  "\u0644",
                                  "\u0627",
                                  "(",
                                  ")",
                                  "e\u0301",
                                  "\u0628",
                                  "\u0647",
                                  "\t",
                                  "\u00AD",
                                  "\n",
                                  ".",
                                  "\u00A0",
                                  "\u0434",
                                  "-",
                                  "\u0644\u064E\u0627",
                                  "\U0001F600",
                                  "\u2764\uFE0F",
                                  "\U0001F469\U0001F3FD\u200D\U0001F680",
                                  "\U0001F1E9\U0001F1EA"};

const Samples arabicSamples = {"\u0628", "\u0633", "\u0627", "\u0644", "\u0647",       "\u062F", "\u0629",
                               " ",      "\u064E", "\u0640", "1",      "\u0643\u0627", "a",      " "};

std::string makeText(std::mt19937& random, const Samples& samples) {
    std::string text;
    const std::size_t count = random() % 40;
    for (std::size_t i = 0; i < count; ++i) {
        text += samples[random() % samples.size()];
    }
    return text;
}

ParagraphStyle makeRandomStyle(std::mt19937& random) {
    constexpr float widths[] = {0.0F, 25.0F, 70.0F, 143.0F, ParagraphStyle::unlimitedWidth};
    return ParagraphStyle()
        .setWidth(widths[random() % std::size(widths)])
        .setAlignment(static_cast<TextAlignment>(random() % 6))
        .setTabDistance(static_cast<float>(random() % 2 * 37));
}

void checkRandomParagraphs(int count, const Samples& samples, const Shape& shape,
                           const std::function<void(const Paragraph&)>& check) {
    std::mt19937 random(20261122);
    for (int i = 0; i < count && !::testing::Test::HasFailure(); ++i) {
        const auto direction = static_cast<ParagraphDirection>(random() % 3);
        const std::string text = makeText(random, samples);
        const ParagraphStyle style = makeRandomStyle(random);
        SCOPED_TRACE(::testing::PrintToString(text) + " at " + std::to_string(style.width) + ", alignment " +
                     std::to_string(static_cast<int>(style.alignment)) + ", direction " +
                     std::to_string(static_cast<int>(direction)));
        check(Paragraph(shape(text, direction), style));
    }
}

} // namespace

void forEachRandomParagraph(const std::function<void(const Paragraph&)>& check) {
    HandShaper byHand;
    byHand.setLigatures();
    checkRandomParagraphs(
        600, handSamples,
        [&](const std::string& text, ParagraphDirection direction) { return byHand.shape(text, direction); },
        check);
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory);
    const TextStyle style = FontEngine::describeFont("DejaVu Sans", 20.0F);
    const auto shape = [&](const std::string& text, ParagraphDirection direction) {
        return shaper.shape(text, style, direction);
    };
    checkRandomParagraphs(600, installedSamples, shape, check);
    checkRandomParagraphs(100, arabicSamples, shape, [&](const Paragraph& paragraph) {
        check(Paragraph(paragraph.getText(),
                        ParagraphStyle(paragraph.getStyle()).setAlignment(TextAlignment::Justify)));
    });
}

} // namespace Vell::Testing
