#include "CoverageFonts.h"

#include <FontLoaders/Private/Coverage/CoverageAnswers.h>

#include <support/InjectedError.h>

#include <gtest/gtest.h>

namespace Vell::Testing {

using namespace FontLoaders;
using Internal::CoverageAnswers;

namespace {

/// Counts how often an answer had to be searched.
struct CountedSearch {
    std::string ask(CoverageAnswers& answers, std::u32string_view cluster, const CoverageText& text = {},
                    std::uint64_t version = 0) {
        const auto found = answers.get(makeRequest(cluster, text), version, [&]() -> CoverageAnswers::Answer {
            ++count;
            if (!hasAnswer) {
                return std::nullopt;
            }
            const auto face = makeClientFaceInfo("Found " + std::to_string(count));
            return CoveringFace{face, face};
        });
        return found ? found->face->getName() : "none";
    }

    int count = 0;
    bool hasAnswer = true;
};

} // namespace

TEST(CoverageAnswers, AreSearchedOnce) {
    CoverageAnswers answers;
    CountedSearch search;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(search.ask(answers, U"A"), "Found 1");
    }
    EXPECT_EQ(search.count, 1);
}

TEST(CoverageAnswers, MayBeThatThereIsNoFace) {
    CoverageAnswers answers;
    CountedSearch search;
    search.hasAnswer = false;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(search.ask(answers, U"A"), "none");
    }
    EXPECT_EQ(search.count, 1);
}

TEST(CoverageAnswers, DependOnEveryPartOfTheRequest) {
    CoverageAnswers answers;
    CountedSearch search;
    const std::pair<std::u32string_view, CoverageText> requests[] = {
        {U"A", {}},
        {U"B", {}},
        {U"AB", {}},
        {U"", {}},
        {U"A", {"Other"}},
        {U"A", {"Own", "de"}},
        {U"A", {"Own", ""}},
        {U"A", {"Ow", "nen"}},
        {U"A", {"Own", "en", true}},
        {U"A", {"Own", "en", false, true}},
        {U"A", {"Own", "en", true, true}},
        {U"A", {"Own", "en", false, false, {""}}},
        {U"A", {"Own", "en", false, false, {"X", "Y"}}},
        {U"A", {"Own", "en", false, false, {"Y", "X"}}},
        {U"A", {"Own", "en", false, false, {"XY"}}}};
    for (int round = 0; round < 2; ++round) {
        int number = 0;
        for (const auto& [cluster, text] : requests) {
            EXPECT_EQ(search.ask(answers, cluster, text), "Found " + std::to_string(++number));
        }
    }
    EXPECT_EQ(search.count, static_cast<int>(std::size(requests)));
}

TEST(CoverageAnswers, AreForgottenWithANewVersion) {
    CoverageAnswers answers;
    CountedSearch search;
    search.ask(answers, U"A", {}, 0);
    EXPECT_EQ(search.ask(answers, U"A", {}, 1), "Found 2");
    EXPECT_EQ(search.ask(answers, U"A", {}, 1), "Found 2");
}

TEST(CoverageAnswers, AreNotKeptIfTheVersionChangesDuringTheSearch) {
    CoverageAnswers answers;
    CountedSearch search;
    const auto nested = [&]() -> CoverageAnswers::Answer {
        search.ask(answers, U"B", {}, 1);
        return std::nullopt;
    };
    EXPECT_FALSE(answers.get(makeRequest(U"A", {}), 0, nested));
    EXPECT_EQ(search.ask(answers, U"A", {}, 1), "Found 2");
}

TEST(CoverageAnswers, TakeABoundedAmountOfMemory) {
    CoverageAnswers answers(10'000);
    CountedSearch search;
    for (char32_t code = 0x4E00; code < 0x4F00; ++code) {
        search.ask(answers, std::u32string(1, code));
    }
    const int before = search.count;
    search.ask(answers, std::u32string(1, char32_t(0x4EFF)));
    EXPECT_EQ(search.count, before) << "the last one is there";
    search.ask(answers, std::u32string(1, char32_t(0x4E00)));
    EXPECT_EQ(search.count, before + 1) << "the first one is not";
}

TEST(CoverageAnswers, LeaveOutEndlessClusters) {
    CoverageAnswers answers;
    CountedSearch search;
    const std::u32string longest(CoverageAnswers::maxCodePoints, U'\u0301');
    search.ask(answers, longest);
    search.ask(answers, longest);
    EXPECT_EQ(search.count, 1);
    search.ask(answers, longest + U"\u0301");
    search.ask(answers, longest + U"\u0301");
    EXPECT_EQ(search.count, 3);
}

TEST(CoverageAnswers, AreNotKeptIfTheSearchThrows) {
    CoverageAnswers answers;
    CountedSearch search;
    const auto fail = []() -> CoverageAnswers::Answer { throw InjectedError(); };
    EXPECT_THROW(answers.get(makeRequest(U"A", {}), 0, fail), InjectedError);
    EXPECT_EQ(search.ask(answers, U"A"), "Found 1");
}

} // namespace Vell::Testing
