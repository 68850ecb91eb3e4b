// Makes every allocation of HarfBuzz, ICU and the library fail in turn.

#include "ParagraphText.h"
#include "ShapedGlyphs.h"

#include <support/FailingMalloc.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/Private/GlyphPiece.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <new>
#include <string>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;
using FontEngine::FontFactory;

namespace {

/// What the call gives if nothing fails, or an empty string if it says that memory is short.
std::string failAt(std::size_t number, const std::function<std::string()>& call, bool& hasFailed) {
    std::string result;
    const FailingMalloc failing(number);
    try {
        result = call();
    } catch (const std::bad_alloc&) {
        result.clear();
    } catch (const TextLayoutException&) {
        result.clear();
    }
    hasFailed = failing.hasFailed();
    return result;
}

using Call = std::function<std::string()>;

/// Makes each allocation of a call fail in turn, until none fails, and calls again. Both times the result
/// must be the expected one, unless the first says that memory is short. `makeCall` gives the call for each
/// allocation. Returns how often it tried.
std::size_t failEachIn(const std::function<Call()>& makeCall, const std::string& expected) {
    bool hasFailed = true;
    std::size_t number = 0;
    while (hasFailed) {
        ++number;
        const Call call = makeCall();
        const std::string result = failAt(number, call, hasFailed);
        EXPECT_TRUE(result.empty() || result == expected) << number << "\n" << result;
        EXPECT_EQ(call(), expected) << "again, " << number;
    }
    return number;
}

NNPtr<const FontFactory> getFactory() {
    static const auto factory = FontFactory::create("DejaVu Sans");
    return factory;
}

/// Latin with a ligature, Hebrew, Arabic with marks, and emoji with a joiner.
const std::string variedText = "office \u05D0\u05B8 12 \u0628\u064E\u0633\u0645 \U0001F469\u200D\U0001F467";

TEST(MallocFaults, GiveNoWrongGlyphs) {
    const std::string expected = describeGlyphs(
        *TextShaper(getFactory(), nullptr).shape(variedText, describeFont("DejaVu Sans", 16.0F)));
    const auto makeShape = [] {
        const auto shaper = std::make_shared<TextShaper>(getFactory(), nullptr);
        const TextStyle style = describeFont("DejaVu Sans", 16.0F);
        return [shaper, style] { return describeGlyphs(*shaper->shape(variedText, style)); };
    };
    EXPECT_GT(failEachIn(makeShape, expected), 100U);
}

TEST(MallocFaults, GiveNoWrongLines) {
    const std::string sentence = "\u0E40\u0E1B\u0E47\u0E19\u0E01\u0E32\u0E23\u0E17\u0E33\u0E07\u0E32\u0E19";
    std::string thai;
    for (int i = 0; i < 20; ++i) {
        thai += sentence;
    }
    const auto breakLines = [&] {
        std::string lines;
        for (const LineBreak& found : findLineBreaks(thai)) {
            lines += std::to_string(found.offset) + (found.isMandatory ? "! " : " ");
        }
        return lines;
    };
    EXPECT_GT(failEachIn([&] { return breakLines; }, breakLines()), 3U);
}

TEST(MallocFaults, GiveNoWrongParagraphs) {
    const TextShaper shaper(getFactory(), nullptr);
    const std::string words =
        "\u0628\u0633\u0645 \u0628\u0628 \u0628\u0628\u0628 \u0E40\u0E1B\u0E47\u0E19\u0E01\u0E32\u0E23";
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const auto breakLines = [&] {
        const Paragraph paragraph(shaper.shape(words, style),
                                  withWidth(60.0F).setAlignment(TextAlignment::Justify));
        std::string result = describeLines(paragraph); // a stream would swallow failures
        for (const ParagraphLine& line : paragraph.getLines()) {
            result += std::to_string(line.width) + " ";
        }
        return result + std::to_string(paragraph.getCaret(4).x) + " " +
               std::to_string(paragraph.getPieces(0).size());
    };
    EXPECT_GT(failEachIn([&] { return breakLines; }, breakLines()), 30U);
}

/// ICU leaks a block if it cannot open an iterator, so no cluster of the text needs one.
TEST(MallocFaults, LeaveNothingBehind) {
    const std::string text = "office \u05D0\u05B8 12 \u0628\u064E\u0633\u0645";
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const auto shape = [&] { return describeGlyphs(*TextShaper(getFactory(), nullptr).shape(text, style)); };
    shape();
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        failAt(number, shape, hasFailed); // makes what later calls use
        const LiveBlocks live;
        failAt(number, shape, hasFailed);
        EXPECT_EQ(live.get(), 0) << number;
    }
}

} // namespace

} // namespace Vell::Testing
