// Makes every call of FreeType fail in turn, in every request for a colour glyph that makes it.

#include <FontEngine/Color/ColorEngine.h>
#include <FontEngine/Faults/FreeTypeCalls.h>
#include <FontEngine/Faults/Outcome.h>
#include <FontEngine/Faults/Services.h>

#include <support/spy/FreeTypeSpy.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace Vell::FontEngine {
namespace {

using Testing::FreeTypeSpy;

std::size_t countInjections(const FreeTypeSpy& spy) {
    const auto calls = spy.getCalls();
    return static_cast<std::size_t>(
        std::count_if(calls.begin(), calls.end(), [](const auto& call) { return call.isInjectedFailure; }));
}

/// Requests the A while the `number`-th call fails. Returns false if there is no such call.
bool failCall(const Testing::Bytes& font, const char* name, std::size_t number, FT_Error error) {
    FreeTypeSpy spy;
    const ColorEngine engine(font);
    const auto request = [&] { return describe(engine.getImage(TestGlyph::a, 15.0F).get()); };
    const std::string expected = request();
    engine.factory->flush();
    const FacePtr face = engine.getFace();
    const auto again = [&] {
        return describe(engine.getColors().getImage(engine.makeKey(TestGlyph::a, 15.0F), face).get());
    };
    spy.failCall(name, number, error);
    const std::string outcome = getOutcome(again);
    if (countInjections(spy) == 0) {
        return false;
    }
    const bool isCached = outcome.find("failed") == std::string::npos;
    EXPECT_TRUE(!isCached || outcome == "null" || outcome == expected) << "half of a glyph";
    EXPECT_EQ(isCached, error != FT_Err_Out_Of_Memory) << outcome;
    EXPECT_EQ(getOutcomeOnAnotherThread(again), isCached ? outcome : expected);
    engine.factory->flush();
    EXPECT_EQ(getOutcomeOnAnotherThread(request), expected);
    return true;
}

/// Returns how many of these calls a request makes.
std::size_t failEach(const Testing::Bytes& font, const char* name, FT_Error error) {
    std::size_t number = 1;
    while (failCall(font, name, number, error)) {
        ++number;
    }
    return number - 1;
}

TEST(ColorFaults, FailOnlyTheRequestForAColourGlyph) {
    const Testing::Bytes pictures = makeSbixFont({makeTwoStrikes().back()}).build(); // with no other strike
    const Testing::Bytes layers = makeLayerFont().build();
    for (const char* const name : getColorCalls()) {
        SCOPED_TRACE(name);
        EXPECT_NE(failEach(pictures, name, FT_Err_Invalid_Argument) +
                      failEach(layers, name, FT_Err_Invalid_Argument),
                  0U);
    }
    for (const char* const name : {"FT_Select_Size", "FT_Load_Glyph", "FT_Outline_Get_Bitmap"}) {
        SCOPED_TRACE(std::string("out of memory: ") + name);
        EXPECT_NE(failEach(pictures, name, FT_Err_Out_Of_Memory) +
                      failEach(layers, name, FT_Err_Out_Of_Memory),
                  0U);
    }
}

} // namespace
} // namespace Vell::FontEngine
