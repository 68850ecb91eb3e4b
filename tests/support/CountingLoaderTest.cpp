#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/InjectedError.h>

#include <gmock/gmock.h>

#include <memory>

namespace Vell::Testing {
namespace {

using testing::ElementsAre;

TEST(CountingLoader, ServesItsFontsAndRecordsTheCalls) {
    CountingLoader loader;
    const auto shared = std::make_shared<const Bytes>(Bytes{1, 2});
    loader.setFont("A", true, false, shared);
    loader.setDefaultFont(false, true, Bytes{3});
    loader.setRangeFamily(7, "Seven");

    EXPECT_EQ(loader.loadFont(makeFaceInfo("A", true)), shared);
    EXPECT_EQ(loader.loadFont(makeFaceInfo("A", true, true)), nullptr);
    EXPECT_EQ(*loader.loadDefaultFont(false, true), Bytes{3});
    EXPECT_EQ(loader.loadDefaultFont(false, false), nullptr);
    EXPECT_EQ(loader.getFamilyNameForRange(7), "Seven");
    EXPECT_EQ(loader.getFamilyNameForRange(8), "");
    EXPECT_THAT(loader.getCalls(),
                ElementsAre("loadFont \"A\" bold", "loadFont \"A\" bold italic", "loadDefaultFont italic",
                            "loadDefaultFont regular", "getFamilyNameForRange 7", "getFamilyNameForRange 8"));
    EXPECT_EQ(loader.countCalls(), 6U);
    EXPECT_EQ(loader.countCalls("loadFont"), 2U);
    loader.clearCalls();
    EXPECT_EQ(loader.countCalls(), 0U);
}

TEST(CountingLoader, ThrowsFromTheGivenCalls) {
    CountingLoader loader;
    loader.throwFrom("loadDefaultFont");
    EXPECT_EQ(loader.loadFont(makeFaceInfo()), nullptr);
    EXPECT_THROW(loader.loadDefaultFont(true, true), InjectedError);
    EXPECT_THAT(loader.getCalls().back(), "loadDefaultFont bold italic");
    loader.throwFrom("");
    EXPECT_EQ(loader.loadDefaultFont(true, true), nullptr);
}

} // namespace
} // namespace Vell::Testing
