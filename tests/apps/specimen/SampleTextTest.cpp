#include "specimen/SampleText.h"

#include <apps/ToolFonts.h>

#include <Utils/Utils.h>

#include <gtest/gtest.h>

#include <set>

namespace Vell::Tool {

namespace {

using namespace Testing;

TEST(SampleText, IsTheFirstScriptThatTheFontCovers) {
    const FactoryPtr factory = FontEngine::FontFactory::create(defaultFamily);
    const TextFont font = makeTextFont(factory, {defaultFamily});
    EXPECT_EQ(chooseSample(font), "Sphinx of black quartz, judge my vow");
    EXPECT_TRUE(coversText(font, "Θά"));
    EXPECT_FALSE(coversText(font, "a中"));
}

TEST(SampleText, TakesTheFirstCharactersOfAFontThatCoversNoScript) {
    const FactoryPtr factory = makeTestFactory();
    const TextFont font = makeTestFont(factory);
    EXPECT_EQ(chooseSample(font), "A_"); // the space is no character to look at
    EXPECT_EQ(getFirstLetter("  x y"), 'x');
    EXPECT_EQ(getFirstLetter("  "), 0U);
    EXPECT_EQ(getFirstLetter(""), 0U);
}

TEST(SampleText, ShowsScriptsOnceEachAndInWellFormedText) {
    std::set<std::string> names;
    for (const ScriptSample& sample : getScriptSamples()) {
        EXPECT_TRUE(names.insert(sample.script).second) << sample.script;
        const std::string text = sample.text;
        const char* position = text.data();
        while (position != text.data() + text.size()) {
            EXPECT_NE(decodeUtf8(position, text.data() + text.size()), replacementCharacter) << sample.script;
        }
    }
    EXPECT_GE(names.size(), 20U);
}

TEST(SampleText, EncodesWhatDecodingReadsBack) {
    for (unsigned int code = 0; code < 0x110000; ++code) {
        if (code < 0xD800 || code > 0xDFFF) {
            const std::string bytes = encodeUtf8(code);
            const char* position = bytes.data();
            ASSERT_EQ(decodeUtf8(position, bytes.data() + bytes.size()), code);
            ASSERT_EQ(position, bytes.data() + bytes.size());
        }
    }
}

} // namespace

} // namespace Vell::Tool
