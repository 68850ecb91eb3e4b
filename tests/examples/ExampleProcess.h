#pragma once

#include <support/Process.h>

#include <FontEngine/FontEngine.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace Vell::Examples::Testing {

/// Runs a built example.
inline Vell::Testing::ProcessResult runExample(const std::string& name,
                                               const std::vector<std::string>& arguments) {
    return Vell::Testing::runProgram(FONTENGINE_EXAMPLES_FOLDER "/" + name, arguments);
}

/// Runs an example that must succeed and print nothing.
inline void drawByExample(const std::string& name, const std::vector<std::string>& arguments) {
    const Vell::Testing::ProcessResult result = runExample(name, arguments);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
}

/// Makes an installed font with descriptions like those of the examples.
struct InstalledFont {
    InstalledFont(const std::string& family, bool isBold, bool isItalic, float size)
        : style(FontEngine::describeFont(family, size,
                                         FontEngine::FontStyle{}.setBold(isBold).setItalic(isItalic)))
        , metrics(factory->getFontMetrics(style->getFontInfo())) {}

    float measure(const std::string& text) const { return metrics->getTextWidth(text, style); }

    NNPtr<FontEngine::FontFactory> factory = FontEngine::FontFactory::create("DejaVu Sans");
    NNPtr<const Gfx::ExtFontInfo> style;
    NNPtr<const Gfx::FontMetrics> metrics;
};

} // namespace Vell::Examples::Testing
