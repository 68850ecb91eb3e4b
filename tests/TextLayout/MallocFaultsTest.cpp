// Makes every allocation of HarfBuzz, ICU and the library fail in turn.

#include "ParagraphText.h"
#include "ShapedGlyphs.h"

#include <support/ChildProcess.h>
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

/// Like failEachIn, but in a process of its own for each allocation, in which ICU has not read the dictionary
/// that the call needs. `prepare` makes what ICU makes once for all dictionaries: if that fails, ICU calls
/// through a null pointer, or never finds a dictionary again.
std::size_t failEachInChildren(const std::function<void()>& prepare, const Call& call) {
    constexpr char separator = '\x1F';
    const std::string expected = callInChild(call);
    EXPECT_FALSE(expected.empty());
    bool hasFailed = true;
    std::size_t number = 0;
    while (hasFailed) {
        ++number;
        const std::string both = callInChild([&] {
            prepare();
            const std::string result = failAt(number, call, hasFailed);
            return (hasFailed ? "!" : "=") + result + separator + call();
        });
        hasFailed = both.front() == '!';
        const std::size_t end = both.find(separator);
        const std::string result = both.substr(1, end - 1);
        EXPECT_TRUE(result.empty() || result == expected) << number << "\n" << result;
        EXPECT_EQ(both.substr(end + 1), expected) << "again, " << number;
    }
    return number;
}

std::string repeat(const std::string& text, int count) {
    std::string repeated;
    for (int i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

const std::string lao = "\u0E9E\u0EB2\u0EAA\u0EB2";

void prepareForWords() {
    findLineBreaks(lao);
}

void prepareForLines() {
    findWordBoundaries(lao);
}

const std::string thaiSentence = "\u0E40\u0E1B\u0E47\u0E19\u0E01\u0E32\u0E23\u0E17\u0E33\u0E07\u0E32\u0E19";

TEST(MallocFaults, GiveNoWrongLines) {
    const auto breakLines = [text = repeat(thaiSentence, 20)] {
        std::string lines;
        for (const LineBreak& found : findLineBreaks(text)) {
            lines += std::to_string(found.offset) + (found.isMandatory ? "! " : " ");
        }
        return lines;
    };
    EXPECT_GT(failEachInChildren(prepareForLines, breakLines), 30U);
}

/// Not of Chinese: if ICU cannot make what only its dictionary needs, it never finds that again.
TEST(MallocFaults, GiveNoWrongWords) {
    const auto findWords = [text = repeat(thaiSentence, 20)] {
        std::string words;
        for (const WordBoundary& found : findWordBoundaries(text)) {
            words += std::to_string(found.offset) + (found.isBehindWord ? "! " : " ");
        }
        return words;
    };
    EXPECT_GT(failEachInChildren(prepareForWords, findWords), 30U);
}

TEST(MallocFaults, GiveNoWrongParagraphs) {
    const std::string words = "\u0628\u0633\u0645 \u0628\u0628 \u0628\u0628\u0628 " + repeat(thaiSentence, 2);
    const auto shaped = TextShaper(getFactory(), nullptr).shape(words, describeFont("DejaVu Sans", 16.0F));
    const auto breakLines = [&] {
        const Paragraph paragraph(shaped, withWidth(70.0F).setAlignment(TextAlignment::Justify));
        std::string result = describeLines(paragraph); // a stream would swallow failures
        for (const ParagraphLine& line : paragraph.getLines()) {
            result += std::to_string(line.width) + " ";
        }
        return result + std::to_string(paragraph.getCaret(4).x) + " " +
               std::to_string(paragraph.getPieces(0).size());
    };
    EXPECT_GT(failEachInChildren(prepareForLines, breakLines), 30U);
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
