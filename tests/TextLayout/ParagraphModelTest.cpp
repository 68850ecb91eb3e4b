// Compares lines with those of Pango, in the same installed fonts, at many widths.

#include "PangoLines.h"

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

struct ModelText {
    const char* name;
    const char* family;
    std::string text;
    std::vector<int> differingWidths = {}; ///< each for the reason above it
};

void PrintTo(const ModelText& text, std::ostream* stream) {
    *stream << text.name;
}

const ModelText modelTexts[] = {
    {"English",
     "DejaVu Sans",
     "The quick brown fox (a well-known one) jumps over 12,345.67 lazy dogs; it costs $3.50, or "
     "\u201C5\u00A0%\u201D "
     "more \u2014 who knows? Officers fled the affluent office. AVATAR To Ty.",
     // Pango divides the ligatures of a word that is too wide.
     {30, 37}},
    {"German",
     "DejaVu Serif",
     "Die Donaudampfschifffahrtsgesellschaftskapit\u00E4nsm\u00FCtze h\u00E4ngt am Haken, "
     "und Rindfleischetikettierungs\u00FCberwachung ist auch ein Wort.",
     // Pango divides the ligatures of a word that is too wide.
     {30, 58, 93, 184}},
    {"SoftHyphens", "DejaVu Sans",
     "An extra\u00ADordi\u00ADnarily hy\u00ADphen\u00ADat\u00ADed para\u00ADgraph with "
     "in\u00ADter\u00ADna\u00ADtional "
     "un\u00ADder\u00ADstand\u00ADing."},
    {"Lines",
     "DejaVu Sans",
     "one\ntwo and a half\r\n\nthree   spaces   here\n  indented\n",
     // Pango lets only one of several spaces hang.
     {30, 37, 44, 58, 65, 72, 79, 142, 149}},
    {"Combining", "DejaVu Sans",
     "cafe\u0301 nai\u0308ve A\u030Angstro\u0308m Zu\u0308rich e\u0301e\u0301e\u0301e\u0301e\u0301"},
    {"Russian", "Liberation Serif",
     "\u0421\u044A\u0435\u0448\u044C \u0436\u0435 \u0435\u0449\u0451 \u044D\u0442\u0438\u0445 "
     "\u043C\u044F\u0433\u043A\u0438\u0445 "
     "\u0444\u0440\u0430\u043D\u0446\u0443\u0437\u0441\u043A\u0438\u0445 "
     "\u0431\u0443\u043B\u043E\u043A, \u0434\u0430 \u0432\u044B\u043F\u0435\u0439 \u0447\u0430\u044E."},
    {"Hebrew", "DejaVu Sans",
     "\u05E9\u05DC\u05D5\u05DD \u05E2\u05D5\u05DC\u05DD (hello 12 world) \u05D6\u05D4 "
     "\u05D8\u05E7\u05E1\u05D8 "
     "\u05D1\u05E2\u05D1\u05E8\u05D9\u05EA \u05E2\u05DD English \u05D1\u05D0\u05DE\u05E6\u05E2."},
    {"Arabic", "Noto Naskh Arabic",
     "\u064A\u0648\u0644\u062F \u062C\u0645\u064A\u0639 \u0627\u0644\u0646\u0627\u0633 "
     "\u0623\u062D\u0631\u0627\u0631\u0627\u064B \u0645\u062A\u0633\u0627\u0648\u064A\u0646 "
     "\u0641\u064A \u0627\u0644\u0643\u0631\u0627\u0645\u0629 \u0648\u0627\u0644\u062D\u0642\u0648\u0642."},
    {"Japanese",
     "Noto Sans CJK JP",
     "\u3059\u3079\u3066\u306E\u4EBA\u9593\u306F\u3001\u751F\u307E\u308C\u306A\u304C\u3089\u306B\u3057\u3066"
     "\u81EA\u7531\u3067\u3042\u308A\u3001\u304B\u3064\u3001\u5C0A\u53B3\u3068\u6A29\u5229\u3068\u306B\u3064"
     "\u3044\u3066\u5E73\u7B49\u3067\u3042\u308B\u3002\uFF08\u4F8B\uFF09",
     // Pango undoes the kerning between the last character and the next line.
     {695}},
    {"Korean", "Noto Sans CJK KR",
     "\uBAA8\uB4E0 \uC778\uAC04\uC740 \uD0DC\uC5B4\uB0A0 \uB54C\uBD80\uD130 \uC790\uC720\uB85C\uC6B0\uBA70 "
     "\uADF8 \uC874\uC5C4\uACFC \uAD8C\uB9AC\uC5D0 \uC788\uC5B4 \uB3D9\uB4F1\uD558\uB2E4."},
    {"Hindi",
     "Noto Sans Devanagari",
     "\u0938\u092D\u0940 \u092E\u0928\u0941\u0937\u094D\u092F\u094B\u0902 \u0915\u094B "
     "\u0917\u094C\u0930\u0935 \u0914\u0930 \u0905\u0927\u093F\u0915\u093E\u0930\u094B\u0902 \u0915\u0947 "
     "\u092E\u093E\u092E\u0932\u0947 \u092E\u0947\u0902 \u091C\u0928\u094D\u092E\u091C\u093E\u0924.",
     // Pango divides the conjuncts of a word that is too wide.
     {30, 37, 44}},
    {"Thai",
     "Noto Sans Thai",
     "\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35\u0E0A\u0E32\u0E27\u0E42\u0E25\u0E01 "
     "\u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35 \u0E1B\u0E23\u0E30\u0E40\u0E17\u0E28\u0E44\u0E17\u0E22",
     // Pango's dictionary divides the last word, and ICU's does not.
     {30, 37, 44, 72, 79, 86, 114, 121, 128, 135, 219, 226, 233, 240, 247}},
};

std::vector<std::size_t> findLines(const Paragraph& paragraph) {
    std::vector<std::size_t> begins;
    for (const ParagraphLine& line : paragraph.getLines()) {
        begins.push_back(line.begin);
    }
    return begins;
}

class ParagraphModel : public ::testing::TestWithParam<ModelText> {};

TEST_P(ParagraphModel, BeginsLinesWherePangoDoes) {
    const ModelText& model = GetParam();
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const TextShaper shaper(factory);
    const auto text = shaper.shape(model.text, TextStyle(FontEngine::describeFont(model.family, 20.0F)));
    const bool hasHyphens = model.text.find("\u00AD") != std::string::npos;
    std::vector<int> differing;
    for (int width = hasHyphens ? 170 : 30; width <= 700; width += 7) {
        const Paragraph paragraph(text, ParagraphStyle().setWidth(static_cast<float>(width)));
        const auto expected = findPangoLines(model.text, model.family, width, hasHyphens);
        if (findLines(paragraph) != expected) {
            differing.push_back(width);
        }
    }
    EXPECT_EQ(differing, model.differingWidths);
}

INSTANTIATE_TEST_SUITE_P(Texts, ParagraphModel, ::testing::ValuesIn(modelTexts),
                         [](const auto& text) { return std::string(text.param.name); });

} // namespace

} // namespace Vell::Testing
