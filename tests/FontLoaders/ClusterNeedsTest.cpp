#include <FontLoaders/Private/Coverage/ClusterNeeds.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace Vell::Testing {

using namespace FontLoaders::Internal;
using FontLoaders::ClusterPresentation;

namespace {

using Spellings = std::vector<std::u32string>;

/// One line of a file of emoji sequences: "231A FE0E ; text style; # comment".
struct SequenceLine {
    std::u32string codes;
    std::string kind;
};

std::vector<SequenceLine> readSequences(const std::string& name) {
    std::ifstream file(UNICODE_EMOJI_FOLDER + ("/" + name));
    std::vector<SequenceLine> lines;
    for (std::string line; std::getline(file, line);) {
        std::istringstream text(line.substr(0, line.find('#')));
        SequenceLine sequence;
        std::string word;
        while (text >> word && word != ";") {
            sequence.codes.push_back(static_cast<char32_t>(std::stoul(word, nullptr, 16)));
        }
        if (text >> sequence.kind) {
            lines.push_back(sequence);
        }
    }
    return lines;
}

std::string spell(const std::u32string& codes) {
    std::ostringstream text;
    for (const char32_t code : codes) {
        text << std::hex << std::uint32_t(code) << ' ';
    }
    return text.str();
}

} // namespace

TEST(ClusterNeeds, IncludeEmojiPresentationForEveryEmojiInUnicodesTest) {
    std::size_t count = 0;
    for (const SequenceLine& line : readSequences("emoji-test.txt")) {
        if (line.kind == "fully-qualified" || line.kind == "minimally-qualified") {
            EXPECT_EQ(findClusterNeeds(line.codes).presentation, ClusterPresentation::Emoji)
                << spell(line.codes);
            ++count;
        }
    }
    EXPECT_GT(count, 3000U);
}

TEST(ClusterNeeds, IncludeThePresentationThatASelectorAsksFor) {
    std::size_t count = 0;
    for (const SequenceLine& line : readSequences("emoji-variation-sequences.txt")) {
        const auto expected = line.kind == "text" ? ClusterPresentation::Text : ClusterPresentation::Emoji;
        EXPECT_EQ(findClusterNeeds(line.codes).presentation, expected) << spell(line.codes);
        ++count;
    }
    EXPECT_GT(count, 300U);
}

TEST(ClusterNeeds, IncludeNoPresentationOfTextThatIsNoEmoji) {
    for (const char32_t* text :
         {U"", U"A", U"1", U"#", U"A\uFE0F", U"A\uFE0E", U"\u00A9", U"1\u20E3", U"\u200D\u200D",
          U"\u0915\u094D\u200D\u0937", U"\u2764\u200D", U"\u2764\u200DA"}) {
        EXPECT_EQ(findClusterNeeds(text).presentation, ClusterPresentation::Plain) << spell(text);
    }
}

TEST(ClusterNeeds, LeaveOutIgnorableCodePointsAndRepetitions) {
    EXPECT_EQ(findClusterNeeds(U"\u0915\u094D\u200D\u094D").spellings, Spellings{U"\u0915\u094D"});
    EXPECT_EQ(findClusterNeeds(U"\u200D\u0915").base, U"\u0915");
    EXPECT_EQ(findClusterNeeds(U"\u200D\uFE0F").spellings, Spellings{U""});
    EXPECT_EQ(findClusterNeeds(U"\u200D\uFE0F").base, U"");
}

TEST(ClusterNeeds, IncludeIgnorableCodePointsThatHarfBuzzShows) {
    for (const char32_t* filler : {U"\u115F", U"\u1160", U"\u3164", U"\uFFA0", U"\U0001BCA0"}) {
        EXPECT_EQ(findClusterNeeds(filler).base, filler);
    }
}

TEST(ClusterNeeds, ListEquivalentSpellings) {
    EXPECT_EQ(findClusterNeeds(U"e\u0301").spellings, (Spellings{U"e\u0301", U"\u00E9"}));
    EXPECT_EQ(findClusterNeeds(U"\u00E9").spellings, (Spellings{U"\u00E9", U"e\u0301"}));
    EXPECT_EQ(findClusterNeeds(U"\u1EAD").spellings, (Spellings{U"\u1EAD", U"a\u0302\u0323"}));
    EXPECT_EQ(findClusterNeeds(U"\u1100\u1161").spellings, (Spellings{U"\u1100\u1161", U"\uAC00"}));
}

} // namespace Vell::Testing
