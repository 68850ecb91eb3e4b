#include "fonts/RecordingFontLoader.h"

#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/InjectedError.h>

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

using Vell::Testing::Bytes;
using Vell::Testing::CountingLoader;
using Vell::Testing::makeFaceInfo;

class RecordingFontLoaderOfAList : public ::testing::Test {
protected:
    RecordingFontLoaderOfAList() {
        _inner->setFont("Sans", true, false, Bytes{1});
        _inner->setDefaultFont(false, true, Bytes{2});
        _inner->setRangeFamily(7, "Greek");
    }

    const NNPtr<CountingLoader> _inner = makeNNPtr<CountingLoader>();
    const RecordingFontLoader _loader{_inner};
};

TEST_F(RecordingFontLoaderOfAList, PassesEveryQuestionOn) {
    EXPECT_EQ(*_loader.loadFont(makeFaceInfo("Sans", true, false)), Bytes{1});
    EXPECT_EQ(_loader.loadFont(makeFaceInfo("Sans", false, false)), nullptr);
    EXPECT_EQ(*_loader.loadDefaultFont(false, true), Bytes{2});
    EXPECT_EQ(_loader.getFamilyNameForRange(7), "Greek");
    EXPECT_EQ(_inner->countCalls(), 4U);
    EXPECT_EQ(&_loader.getLoader(), _inner.get());
}

TEST_F(RecordingFontLoaderOfAList, RecordsTheQuestionsInTheirOrder) {
    _loader.getFamilyNameForRange(7);
    _loader.loadFont(makeFaceInfo("Sans", true, false));
    _loader.loadDefaultFont(true, true);
    const auto questions = _loader.getQuestions();
    ASSERT_EQ(questions.size(), 3U);
    EXPECT_EQ(std::get<RangeQuestion>(questions[0]).rangeId, 7U);
    EXPECT_EQ(std::get<RangeQuestion>(questions[0]).answer, "Greek");
    const auto& font = std::get<FontQuestion>(questions[1]);
    EXPECT_EQ(font.family, "Sans");
    EXPECT_TRUE(font.isBold);
    EXPECT_FALSE(font.isItalic);
    EXPECT_EQ(*font.answer, Bytes{1});
    const auto& other = std::get<FontQuestion>(questions[2]);
    EXPECT_FALSE(other.family.has_value());
    EXPECT_TRUE(other.isBold);
    EXPECT_TRUE(other.isItalic);
    EXPECT_EQ(other.answer, nullptr);
}

TEST_F(RecordingFontLoaderOfAList, RecordsARepeatedQuestionOnce) {
    for (int i = 0; i < 2; ++i) {
        _loader.getFamilyNameForRange(7);
        _loader.getFamilyNameForRange(8);
        _loader.loadFont(makeFaceInfo("Sans", true, false));
        _loader.loadFont(makeFaceInfo("Sans", false, true));
        _loader.loadFont(makeFaceInfo("Serif", true, false));
        _loader.loadDefaultFont(true, false);
    }
    EXPECT_EQ(_inner->countCalls(), 12U);
    EXPECT_EQ(_loader.getQuestions().size(), 6U);
}

TEST_F(RecordingFontLoaderOfAList, PassesAFailureOn) {
    _inner->throwFrom("loadFont");
    EXPECT_THROW(_loader.loadFont(makeFaceInfo("Sans", true, false)), Vell::Testing::InjectedError);
    EXPECT_TRUE(_loader.getQuestions().empty());
}

} // namespace

} // namespace Vell::Tool
