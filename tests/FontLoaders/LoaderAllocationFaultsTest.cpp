#include "VaryingFonts.h"
// Makes every allocation by operator new fail in turn, in each operation of the platform loader. fontconfig's
// own allocations do not use operator new.

#include <support/FailingAllocations.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>

namespace Vell::Testing {

using namespace FontLoaders;

namespace {

using Vell::Testing::FailingAllocations;
using Vell::Testing::LiveBytes;

using LoaderPtr = NNPtr<FontLoader>;

/// Sends a request to the loader and describes its answer.
struct LoaderRequest {
    const char* name;
    std::function<std::string(const LoaderPtr&)> send;
};

std::string describe(const std::shared_ptr<const Bytes>& bytes) {
    return bytes ? std::string(bytes->begin(), bytes->end()) : "null";
}

std::string getError(const LoaderPtr& loader, const std::string& name) {
    try {
        return describe(load(loader, name));
    } catch (const FontLoaderException& error) {
        return error.what();
    }
}

std::string openAlpha(const LoaderPtr& loader) {
    const std::shared_ptr<const Bytes> bytes = load(loader, "Alpha");
    const auto library = createFreeTypeLibrary();
    const auto shared = shareFreeTypeLibrary(library.get());
    return createFontFace(library, makeNNPtr<const Bytes>(*bytes))->family_name;
}

std::string findFamily(const LoaderPtr& loader, std::u32string_view cluster, const std::string& language) {
    const auto fallback = createPlatformCoverageFallback(*loader);
    const auto face = makeClientFaceInfo("Alpha", true);
    fallback->findFace({cluster, face, language, {"Gamma", "Lost"}}); // so that the next answer is remembered
    const auto found = fallback->findFace({cluster, face, language, {"Gamma", "Lost"}});
    return found ? found->face->getName() : "none";
}

const LoaderRequest loaderRequests[] = {
    {"createPlatformDefaultFontLoader",
     [](const auto&) { return describe(load(createPlatformDefaultFontLoader("Alpha"), "Unknown")); }},
    {"loadFont", [](const auto& loader) { return describe(load(loader, "Alpha")); }},
    {"loadFont of a face of a collection",
     [](const auto& loader) { return describe(load(loader, "Gamma")); }},
    {"loadFont of a generic name", [](const auto& loader) { return describe(load(loader, "sans-serif")); }},
    {"loadFont of an alias", [](const auto& loader) { return describe(load(loader, "Wish")); }},
    {"loadFont of an unknown name", [](const auto& loader) { return describe(load(loader, "Unknown")); }},
    {"loadFont of a font without a charmap",
     [](const auto& loader) { return describe(load(loader, "Mute")); }},
    {"loadFont of a lost file", [](const auto& loader) { return getError(loader, "Lost"); }},
    {"loadDefaultFont", [](const auto& loader) { return describe(loader->loadDefaultFont(false, false)); }},
    {"loadDefaultFont of a style",
     [](const auto& loader) { return describe(loader->loadDefaultFont(true, false)); }},
    {"loadFont of a style that axes give",
     [](const auto& loader) { return describe(load(loader, "Vary", true)); }},
    {"loadFont of a named instance", [](const auto& loader) { return describe(load(loader, "Vary Bold")); }},
    {"loadFont of settings",
     [](const auto& loader) { return describe(load(createVariationLoader(loader), "Vary:wght=650")); }},
    {"getFamilyNameForRange", [](const auto& loader) { return loader->getFamilyNameForRange(1); }},
    {"findFace", [](const auto& loader) { return findFamily(loader, U"A\u0301", "zh-Hant"); }},
    {"findFace of a character that no face has",
     [](const auto& loader) { return findFamily(loader, U"\u0416", ""); }},
    {"findFace of a face of a lost file",
     [](const auto& loader) { return findFamily(loader, U"\u03B1", "el"); }},
    {"opening a face", openAlpha}};

class LoaderAllocationFaults : public ::testing::Test {
protected:
    LoaderAllocationFaults() {
        sandbox.write("a.ttf", makeBlankFont("Alpha").build());
        sandbox.write("ab.ttf", makeBlankFont("Alpha", 700).build());
        sandbox.write("b.ttc", buildCollection({makeBlankFont("Beta"), makeBlankFont("Gamma")}));
        sandbox.write("l.ttf", makeLost());
        sandbox.write("m.ttf", FontBuilder("Mute").build());
        sandbox.write("v.ttf", makeVaryingFont().build());
    }

    static Bytes makeLost() {
        return makeBlankFont("Lost", 400, false, {{'A', 'Z'}, {0x3B1, 0x3B1}}).build();
    }

    /// A loader that lists a file that was deleted.
    LoaderPtr makeLoader() const {
        sandbox.write("l.ttf", makeLost());
        const LoaderPtr loader = createPlatformDefaultFontLoader("Alpha");
        load(loader, "Unknown");
        sandbox.remove("l.ttf");
        return loader;
    }

    /// Returns whether an allocation failed.
    bool sendWithout(std::size_t number, const LoaderRequest& request, const LoaderPtr& loader) const {
        const FailingAllocations failing(number);
        try {
            request.send(loader);
            EXPECT_FALSE(failing.hasFailed()) << "the failure was ignored";
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(failing.hasFailed());
        }
        EXPECT_TRUE(failing.hasFailed() || number > 1) << "every request allocates";
        return failing.hasFailed();
    }

    void expectSurvivesEveryFailure(const LoaderRequest& request,
                                    const std::function<LoaderPtr()>& make) const {
        const std::string expected = request.send(make());
        bool hasFailed = true;
        for (std::size_t number = 1; hasFailed; ++number) {
            SCOPED_TRACE(std::string(request.name) + " without its allocation " + std::to_string(number));
            const LiveBytes live;
            {
                const LoaderPtr loader = make();
                hasFailed = sendWithout(number, request, loader);
                ASSERT_EQ(request.send(loader), expected);
            }
            ASSERT_EQ(live.get(), 0U);
        }
    }

    const FontSandbox sandbox{"<alias binding=\"same\"><family>Wish</family><accept><family>Alpha</family>"
                              "</accept></alias>"};
};

TEST_F(LoaderAllocationFaults, FailOnlyTheRequestInProgress) {
    for (const LoaderRequest& request : loaderRequests) {
        expectSurvivesEveryFailure(request, [this] { return makeLoader(); });
    }
}

TEST_F(LoaderAllocationFaults, FailOnlyTheFirstRequestOfALoader) {
    expectSurvivesEveryFailure(loaderRequests[1], [] { return createPlatformDefaultFontLoader("Alpha"); });
}

TEST(LoaderAllocationFaultsWithoutFonts, FailOnlyTheRequestForTheBuiltInFont) {
    const FontSandbox sandbox;
    const LoaderPtr loader = createPlatformDefaultFontLoader("");
    const auto ask = [&] { return describe(loader->loadDefaultFont(false, false)); };
    const std::string expected = ask();
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        {
            const FailingAllocations failing(number);
            try {
                ask();
            } catch (const std::bad_alloc&) {
            }
            hasFailed = failing.hasFailed();
        }
        ASSERT_TRUE(ask() == expected) << "without allocation " << number;
    }
}

} // namespace

} // namespace Vell::Testing
