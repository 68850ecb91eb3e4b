#include <FontEngine/AssertionText.h>
#include <FontEngine/Engine.h>

#include <support/InjectedError.h>

#include <gmock/gmock.h>

#include <array>
#include <thread>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;
using testing::ElementsAre;
using Testing::FaceInfoPtr;
using Testing::InjectedError;
using testing::IsEmpty;
using Testing::makeFaceInfo;

/// The answer to each request if these files are installed: the file and the synthetic styles. Files: R
/// regular, B bold, I italic, Z bold italic. Styles: 1 emboldened, 2 slanted, 3 both.
struct Row {
    const char* installed;
    std::array<const char*, 4> answers; ///< regular, bold, italic, bold italic
};

constexpr Row anyFamily[] = {
    {"", {"-", "-", "-", "-"}},         {"Z", {"-", "-", "-", "Z0"}},      {"I", {"I0", "I1", "I0", "I1"}},
    {"IZ", {"I0", "I1", "I0", "Z0"}},   {"B", {"B0", "B0", "B2", "B2"}},   {"BZ", {"B0", "B0", "B2", "Z0"}},
    {"BI", {"B0", "B0", "I0", "B0"}},   {"BIZ", {"B0", "B0", "I0", "Z0"}}, {"R", {"R0", "R1", "R2", "R3"}},
    {"RZ", {"R0", "R1", "R2", "Z0"}},   {"RI", {"R0", "R1", "I0", "R3"}},  {"RIZ", {"R0", "R1", "I0", "Z0"}},
    {"RB", {"R0", "B0", "R2", "B2"}},   {"RBZ", {"R0", "B0", "R2", "Z0"}}, {"RBI", {"R0", "B0", "I0", "B2"}},
    {"RBIZ", {"R0", "B0", "I0", "Z0"}},
};

constexpr Row yuGothicMedium[] = {
    {"", {"-", "-", "-", "-"}},         {"Z", {"-", "-", "-", "-"}},       {"I", {"I0", "I1", "I0", "I1"}},
    {"IZ", {"I0", "I1", "I0", "I1"}},   {"B", {"B0", "B1", "B2", "B3"}},   {"BZ", {"B0", "B1", "B2", "B3"}},
    {"BI", {"B0", "B1", "B0", "B1"}},   {"BIZ", {"B0", "B1", "B0", "B1"}}, {"R", {"R0", "R1", "R2", "R3"}},
    {"RZ", {"R0", "R1", "R2", "R3"}},   {"RI", {"R0", "R1", "R2", "R3"}},  {"RIZ", {"R0", "R1", "R2", "R3"}},
    {"RB", {"R0", "R1", "R2", "B2"}},   {"RBZ", {"R0", "R1", "R2", "B2"}}, {"RBI", {"R0", "R1", "R2", "B2"}},
    {"RBIZ", {"R0", "R1", "R2", "B2"}},
};

/// A factory whose font files have one byte, the letter of their style.
struct Files {
    Files(const std::string& family, const std::string& installed) {
        for (const char style : installed) {
            loader->setFont(family, style == 'B' || style == 'Z', style == 'I' || style == 'Z',
                            Bytes{static_cast<unsigned char>(style)});
        }
    }

    std::string ask(const std::string& family, bool bold, bool italic) const {
        const auto data = factory->getFaceData(makeFaceInfo(family, bold, italic));
        if (!data) {
            return "-";
        }
        return std::string(1, static_cast<char>(data->bytes->at(0))) +
               std::to_string(static_cast<int>(data->transform));
    }

    std::shared_ptr<Testing::CountingLoader> loader = std::make_shared<Testing::CountingLoader>();
    FactoryPtr factory = FontFactory::create(loader, "Default Family");
};

template <std::size_t count>
void expectTable(const std::string& family, const Row (&rows)[count]) {
    static_assert(count == 16, "every set of styles");
    for (const Row& row : rows) {
        for (unsigned int request = 0; request < 4; ++request) {
            const Files files(family, row.installed);
            EXPECT_EQ(files.ask(family, (request & 1U) != 0, (request & 2U) != 0), row.answers.at(request))
                << family << ", installed: \"" << row.installed << "\", request " << request;
            EXPECT_LE(files.loader->countCalls(), 4U);
            files.loader->clearCalls();
            EXPECT_EQ(files.ask(family, (request & 1U) != 0, (request & 2U) != 0), row.answers.at(request));
            EXPECT_THAT(files.loader->getCalls(), IsEmpty()) << "every answer is cached";
        }
    }
}

TEST(FaceData, ReplacesMissingStyles) {
    expectTable("Test Sans", anyFamily);
}

TEST(FaceData, ReplacesMissingStylesOfFamiliesWithSimilarNames) {
    expectTable("Yu Gothic", anyFamily);
    expectTable("yu gothic medium", anyFamily);
    expectTable("Yu Gothic Medium ", anyFamily);
}

TEST(FaceData, SynthesisesYuGothicMediumFromItsRegularFile) {
    expectTable("Yu Gothic Medium", yuGothicMedium);
}

TEST(FaceData, ReplacesMissingStylesOfTheDefaultFont) {
    Files files("", "");
    files.loader->setDefaultFont(false, false, Bytes{'R'});
    EXPECT_EQ(files.ask("", false, false), "R0");
    EXPECT_EQ(files.ask("", true, false), "R1");
    EXPECT_EQ(files.ask("", false, true), "R2");
    EXPECT_EQ(files.ask("", true, true), "R3");
    EXPECT_THAT(files.loader->getCalls(),
                ElementsAre("loadDefaultFont regular", "loadDefaultFont bold", "loadDefaultFont italic",
                            "loadDefaultFont bold italic"));
}

TEST(FaceData, ProbesRegularThenBoldThenItalic) {
    const Files files("Test Sans", "");
    EXPECT_EQ(files.ask("Test Sans", true, true), "-");
    EXPECT_THAT(files.loader->getCalls(),
                ElementsAre("loadFont \"Test Sans\" bold italic", "loadFont \"Test Sans\" regular",
                            "loadFont \"Test Sans\" bold", "loadFont \"Test Sans\" italic"));
}

TEST(FaceData, RequestsNoMoreThanItNeeds) {
    const Files exact("a", "RBIZ");
    EXPECT_EQ(exact.ask("a", true, true), "Z0");
    EXPECT_THAT(exact.loader->getCalls(), ElementsAre("loadFont \"a\" bold italic"));
    const Files regular("a", "RI");
    EXPECT_EQ(regular.ask("a", true, false), "R1");
    EXPECT_THAT(regular.loader->getCalls(), ElementsAre("loadFont \"a\" bold", "loadFont \"a\" regular"));
    const Files bold("a", "RBI");
    EXPECT_EQ(bold.ask("a", true, true), "B2");
    EXPECT_THAT(bold.loader->getCalls(),
                ElementsAre("loadFont \"a\" bold italic", "loadFont \"a\" regular", "loadFont \"a\" bold"))
        << "not for the italic one";
}

TEST(FaceData, SharesTheBytesOfTheLoader) {
    const auto bytes = std::make_shared<const Bytes>(Bytes{1, 2});
    const auto loader = std::make_shared<Testing::CountingLoader>();
    loader->setFont("a", false, false, bytes);
    const FactoryPtr factory = FontFactory::create(loader, "");
    const auto exact = factory->getFaceData(makeFaceInfo("a"));
    const auto bold = factory->getFaceData(makeFaceInfo("a", true));
    EXPECT_EQ(exact->bytes.get(), bytes.get());
    EXPECT_EQ(bold->bytes.get(), bytes.get());
    EXPECT_NE(factory->getFaceData(makeFaceInfo("a")), exact) << "the record itself is made anew";
}

TEST(FaceDataBytes, CachesAnswersIncludingNull) {
    const Files files("a", "R");
    EXPECT_EQ(files.factory->getFaceDataBytes(makeFaceInfo("a")),
              files.factory->getFaceDataBytes(makeFaceInfo("a")));
    EXPECT_EQ(files.factory->getFaceDataBytes(makeFaceInfo("b", true)), nullptr);
    EXPECT_EQ(files.factory->getFaceDataBytes(makeFaceInfo("b", true)), nullptr);
    EXPECT_THAT(files.loader->getCalls(), ElementsAre("loadFont \"a\" regular", "loadFont \"b\" bold"));
}

TEST(FaceDataBytes, RequestsTheDefaultFontIfTheNameIsEmpty) {
    Files files("a", "");
    files.loader->setDefaultFont(true, false, Bytes{7});
    EXPECT_EQ(files.factory->getFaceDataBytes(makeFaceInfo("", true, false))->at(0), 7);
    EXPECT_EQ(files.factory->getFaceDataBytes(makeFaceInfo("", false, true)), nullptr);
    EXPECT_THAT(files.loader->getCalls(), ElementsAre("loadDefaultFont bold", "loadDefaultFont italic"));
}

TEST(FaceDataBytes, PropagatesTheLoadersExceptionsAndTriesAgain) {
    const Files files("a", "R");
    files.loader->throwFrom("loadFont");
    EXPECT_THROW(files.factory->getFaceDataBytes(makeFaceInfo("a")), InjectedError);
    EXPECT_THROW(files.factory->getFaceData(makeFaceInfo("a")), InjectedError);
    files.loader->throwFrom("");
    std::string answer;
    std::thread([&] { answer = files.ask("a", false, false); }).join();
    EXPECT_EQ(answer, "R0") << "on another thread: the lock was released";
    EXPECT_EQ(files.loader->countCalls(), 3U);
}

TEST(FaceData, KeepsTheStyleUnderTheDefaultName) {
    const Files files("a", "");
    for (const bool bold : {false, true}) {
        for (const bool italic : {false, true}) {
            const FaceInfoPtr face =
                files.factory->substituteDefaultFaceName(makeFaceInfo("a", bold, italic));
            EXPECT_EQ(face->getName(), "Default Family");
            EXPECT_EQ(face->isBold(), bold);
            EXPECT_EQ(face->isItalic(), italic);
        }
    }
    EXPECT_THAT(files.loader->getCalls(), IsEmpty());
}

/// A loader that requests from the factory the font that it is loading.
class CircularLoader : public Testing::CountingLoader {
public:
    std::shared_ptr<const Bytes> loadFont(const NNPtr<const Gfx::FontFaceInfo>& face) const override {
        if (!std::exchange(isInside, true)) {
            factory->getFaceDataBytes(face);
        }
        return nullptr;
    }

    const FontFactory* factory = nullptr;
    mutable bool isInside = false;
};

TEST(FaceDataDeathTest, AssertsThatALoaderDoesNotRequestTheFontItLoads) {
    const auto loader = std::make_shared<CircularLoader>();
    const FactoryPtr factory = FontFactory::create(loader, "");
    loader->factory = factory.get();
    EXPECT_DEATH(factory->getFaceDataBytes(makeFaceInfo("a")),
                 Testing::printsAssertion("Utils/Public/MRUCache:199", "value"));
}

TEST(FaceDataDeathTest, AssertsItsDescription) {
    const Files files("a", "");
    const FaceInfoPtr null = Testing::makeMovedFrom(makeFaceInfo());
    EXPECT_DEATH(files.factory->getFaceDataBytes(null), Testing::printsNullDereference());
    EXPECT_DEATH(files.factory->getFaceData(null), Testing::printsNullDereference());
    EXPECT_DEATH(files.factory->substituteDefaultFaceName(null), Testing::printsNullDereference());
}

} // namespace
} // namespace Vell::FontEngine
