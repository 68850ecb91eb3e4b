// Makes every allocation by operator new fail in turn, and what clients implement. MallocFaultsTest.cpp does
// the same with the allocations of HarfBuzz and ICU.

#include "ShapedGlyphs.h"

#include <support/CountingLoader.h>
#include <support/FailingAllocations.h>
#include <support/FontBuilder.h>
#include <support/InjectedError.h>

#include <FontEngine/FontEngine.h>
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

/// Latin, then a letter, an accented letter and a Hebrew letter that only the other font has.
const std::string faultyText = "ab ba \u0416 a\u0301 ab\n\u05D0 ab aab abb bba bbb";

Bytes makeFont(const std::string& family, std::initializer_list<std::uint32_t> codes) {
    FontBuilder font(family);
    for (const std::uint32_t code : codes) {
        font.map(code, font.addGlyph(makeBoxGlyph(500 + code % 100, 100, 0, 500, 700)));
    }
    return font.build();
}

std::shared_ptr<CountingLoader> makeLoader() {
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Own", false, false, makeFont("Own", {'a', 'b', ' '}));
    loader->setFont("Other", false, false, makeFont("Other", {0x416, 'a', 0x301, 0x5D0}));
    loader->setDefaultFont(false, false, makeFont("Own", {'a', 'b', ' '}));
    loader->setRangeFamily(FontLoaders::UnicodeRangeMap::find(0x416), "Other");
    return loader;
}

NNPtr<const FontFactory> makeFactory(const std::shared_ptr<CountingLoader>& loader) {
    return FontFactory::create(NNPtr<const FontLoaders::FontLoader>(loader), "Own");
}

/// Answers "Other", and throws from one of its calls.
class FaultyFallback final : public FontLoaders::CoverageFallback {
public:
    /// 1 is the next call, 0 none.
    void throwFromCall(std::size_t number) { _callsUntilError = number; }
    bool hasThrown() const { return _hasThrown; }

    std::optional<FontLoaders::CoveringFace>
    findFace(const FontLoaders::CoverageRequest& /*request*/) const override {
        if (_callsUntilError != 0 && --_callsUntilError == 0) {
            _hasThrown = true;
            throw InjectedError();
        }
        const auto face = describeFont("Other", 10.0F)->getFontInfo()->getFontFaceInfo();
        return FontLoaders::CoveringFace{face, face};
    }

private:
    mutable std::size_t _callsUntilError = 0;
    mutable bool _hasThrown = false;
};

std::string shape(const TextShaper& shaper) {
    TextStyle style = describeFont("Own", 10.0F);
    style.setLanguage("sr").setFeatures(parseTextFeatures("-liga,kern[3:5]=0"));
    TextStyle large = describeFont("Own", 20.0F);
    return describeGlyphs(*shaper.shape(faultyText, {{0, 9, style}, {9, faultyText.size(), large}}));
}

/// Returns whether the allocation happened. The text then has to look as expected all the same.
bool failsAt(const TextShaper& shaper, std::size_t number, const std::string& expected) {
    bool hasFailed = false;
    {
        const FailingAllocations failing(number);
        try {
            EXPECT_EQ(shape(shaper), expected) << "the glyphs could not be shrunk, " << number;
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failing.hasFailed());
        }
        hasFailed = failing.hasFailed();
    }
    EXPECT_EQ(shape(shaper), expected) << number;
    EXPECT_EQ(shape(shaper), expected) << "with cached words, " << number;
    return hasFailed;
}

TEST(ShapingFaults, ThrowWhateverAllocationFailsAndCacheNothingWrong) {
    const auto fallback = std::make_shared<const FaultyFallback>();
    const auto factory = makeFactory(makeLoader());
    const std::string expected = shape(TextShaper(factory, fallback));
    const LiveBytes live;
    std::size_t number = 1;
    for (bool fails = true; fails; ++number) {
        const TextShaper shaper(factory, fallback);
        fails = failsAt(shaper, number, expected);
    }
    EXPECT_GT(number, 100U);
    EXPECT_EQ(live.get(), 0U);
}

TEST(ShapingFaults, ThrowWhateverAllocationFailsOfACachedText) {
    const TextShaper shaper(makeFactory(makeLoader()), std::make_shared<const FaultyFallback>());
    const std::string expected = shape(shaper);
    const LiveBytes live;
    std::size_t number = 1;
    while (failsAt(shaper, number, expected)) {
        ++number;
    }
    EXPECT_GT(number, 10U);
    EXPECT_EQ(live.get(), 0U);
}

TEST(ShapingFaults, ThrowWhenAnAllocationFailsWhileWordsAreEvicted) {
    const TextShaper shaper(makeFactory(makeLoader()), std::make_shared<const FaultyFallback>(), 1024);
    const std::string expected = shape(shaper);
    std::size_t number = 1;
    while (failsAt(shaper, number, expected)) {
        ++number;
        EXPECT_LE(shaper.getCacheFigures().bytes, 1024U);
    }
    EXPECT_GT(shaper.getCacheFigures().evictions, 0U);
}

TEST(ShapingFaults, PassOnWhatAFallbackThrowsAtEachCall) {
    const auto factory = makeFactory(makeLoader());
    const std::string expected = shape(TextShaper(factory, std::make_shared<const FaultyFallback>()));
    std::size_t number = 1;
    for (;; ++number) {
        const auto fallback = std::make_shared<FaultyFallback>();
        const TextShaper shaper(factory, fallback);
        fallback->throwFromCall(number);
        try {
            EXPECT_EQ(shape(shaper), expected);
            EXPECT_FALSE(fallback->hasThrown());
        } catch (const InjectedError&) {
            EXPECT_TRUE(fallback->hasThrown());
        }
        fallback->throwFromCall(0);
        EXPECT_EQ(shape(shaper), expected);
        if (!fallback->hasThrown()) {
            break;
        }
    }
    EXPECT_GE(number, 4U);
}

TEST(ShapingFaults, PassOnWhatALoaderThrows) {
    for (const char* const call : {"loadFont \"Own\"", "loadFont \"Other\"", "getFamilyNameForRange"}) {
        const std::string expected = shape(TextShaper(makeFactory(makeLoader())));
        const auto loader = makeLoader();
        const TextShaper shaper(makeFactory(loader));
        loader->throwFrom(call);
        EXPECT_THROW(shape(shaper), InjectedError) << call;
        EXPECT_THROW(shape(shaper), InjectedError) << call;
        loader->throwFrom("");
        EXPECT_EQ(shape(shaper), expected) << call;
    }
}

/// Shapes a text itself, as one that measures its candidates would.
class ShapingFallback final : public FontLoaders::CoverageFallback {
public:
    const TextShaper* shaper = nullptr;

    std::optional<FontLoaders::CoveringFace>
    findFace(const FontLoaders::CoverageRequest& request) const override {
        shaper->shape("ab", describeFont("Own", 10.0F));
        return FaultyFallback().findFace(request);
    }
};

TEST(ShapingFaults, HoldNoLockWhileAFallbackIsAsked) {
    const auto factory = makeFactory(makeLoader());
    const auto fallback = std::make_shared<ShapingFallback>();
    const TextShaper shaper(factory, fallback);
    fallback->shaper = &shaper;
    EXPECT_EQ(shape(shaper), shape(TextShaper(factory, std::make_shared<const FaultyFallback>())));
}

TEST(ShapingFaults, KeepNoPlanForEachOfManySettings) {
    const TextShaper shaper(makeFactory(makeLoader()), nullptr, 1024);
    const LiveBytes live;
    for (std::uint32_t value = 1; value <= 2000; ++value) {
        for (const std::size_t end : {std::size_t{1}, TextFeature::endOfText}) {
            const auto style =
                TextStyle(describeFont("Own", 10.0F)).setFeatures({{0x6C696761, value, 0, end}});
            EXPECT_EQ(shaper.shape("ab", style)->getGlyphs().size(), 2U);
        }
    }
    EXPECT_LT(live.get(), std::size_t{1} << 20U);
}

} // namespace

} // namespace Vell::Testing
