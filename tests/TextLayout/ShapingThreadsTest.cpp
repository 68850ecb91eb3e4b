#include "ShapedGlyphs.h"

#include <support/Threads.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;
using FontEngine::FontFactory;

namespace {

struct Sample {
    std::string text;
    TextStyle style;
};

std::vector<Sample> makeSamples() {
    std::vector<Sample> samples;
    const char* const texts[] = {"office AVA To",
                                 "\u05D0\u05D1 12 \u05D2",
                                 "\u0633\u0639\u0631 \u0633",
                                 "\u0928\u092E\u0938\u094D\u0924\u0947",
                                 "a\u0301 \u0416",
                                 "\u6587\u5B57 x"};
    for (const char* const text : texts) {
        for (const char* const family : {"DejaVu Sans", "DejaVu Serif"}) {
            const TextStyle style = describeFont(family, 12.0F);
            samples.push_back({text, style});
            samples.push_back({text, TextStyle(style).setFeatures(parseTextFeatures("-kern"))});
            samples.push_back({text, TextStyle(style).setFeatures(parseTextFeatures("liga[0:3]=0"))});
        }
    }
    return samples;
}

std::vector<std::string> shapeAll(const TextShaper& shaper, const std::vector<Sample>& samples,
                                  std::size_t first) {
    std::vector<std::string> shaped(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const std::size_t place = (first + i) % samples.size();
        shaped[place] = describeGlyphs(*shaper.shape(samples[place].text, samples[place].style));
    }
    return shaped;
}

TEST(ShapingThreads, ShareAShaperWhoseWordsAreEvicted) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const std::vector<Sample> samples = makeSamples();
    const std::vector<std::string> expected = shapeAll(TextShaper(factory), samples, 0);
    constexpr unsigned int threads = 4;
    const TextShaper shaper(factory, 2048);
    for (int round = 0; round < 3; ++round) {
        std::vector<std::vector<std::string>> shaped(threads);
        runOnThreads(threads,
                     [&](unsigned int index) { shaped[index] = shapeAll(shaper, samples, 7 * index); });
        EXPECT_THAT(shaped, ::testing::Each(expected));
    }
    EXPECT_GT(shaper.getCacheFigures().evictions, 0U);
    EXPECT_LE(shaper.getCacheFigures().bytes, 2048U);
}

TEST(ShapingThreads, FlushAShaperThatOthersUse) {
    const auto factory = FontFactory::create("DejaVu Sans");
    const std::vector<Sample> samples = makeSamples();
    const std::vector<std::string> expected = shapeAll(TextShaper(factory), samples, 0);
    constexpr unsigned int threads = 4;
    TextShaper shaper(factory);
    std::vector<std::vector<std::string>> shaped(threads, expected);
    runOnThreads(threads, [&](unsigned int index) {
        for (int round = 0; round < 4; ++round) {
            if (index == 0) {
                shaper.flush();
                shaper.getCacheFigures();
            } else {
                shaped[index] = shapeAll(shaper, samples, 5 * index);
            }
        }
    });
    EXPECT_THAT(shaped, ::testing::Each(expected));
}

} // namespace

} // namespace Vell::Testing
