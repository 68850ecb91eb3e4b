#include "FaceMetrics.h"

#include <support/ClientDescriptions.h>
#include <support/ExpectAssertion.h>

#include <limits>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace Vell::Gfx {
namespace {

using Glyph = CharMap::GlyphIndexWithAdvance;
using Testing::ExtFontInfoPtr;
using Testing::FontInfoPtr;

static_assert(std::is_abstract_v<UniversalFontMetrics> &&
              std::is_base_of_v<FontMetrics, UniversalFontMetrics>);
static_assert(std::is_abstract_v<FontMetricsFactory> && std::is_abstract_v<Painter>);
static_assert(std::is_polymorphic_v<Path> && !std::is_abstract_v<Path> &&
              std::has_virtual_destructor_v<Path>);

/// Substitutes one missing character and records the requests.
class Metrics : public UniversalFontMetrics {
public:
    explicit Metrics(FontInfoPtr fontInfo, BasicMetricsPtr metrics = makeMetrics())
        : UniversalFontMetrics(std::move(fontInfo), std::move(metrics)) {}

    void trySubstituteGlyph(const ExtFontInfoPtr& ext, unsigned int codePoint, Glyph& glyph) const override {
        asked.emplace_back(ext.get(), codePoint, glyph.advance);
        if (codePoint == '*') {
            glyph = Glyph(40, 2.0F);
        }
    }

    mutable std::vector<std::tuple<const ExtFontInfo*, unsigned int, float>> asked;
};

TEST(UniversalFontMetrics, ScalesTheFaceMetricsByTheSize) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    EXPECT_EQ(metrics.getFontSize(), 16.0F);
    EXPECT_EQ(metrics.getHeight(), 20.0F);
    EXPECT_EQ(metrics.getAscent(), 12.0F);
    EXPECT_EQ(metrics.getDescent(), 4.0F);
    EXPECT_EQ(metrics.getLeading(), 4.0F);
    EXPECT_EQ(metrics.getCapHeight(), 10.0F);
    EXPECT_EQ(metrics.getStrikeOutPosition(), 6.0F);
    EXPECT_EQ(metrics.getBaseLineShift(), 0.0F);
}

TEST(UniversalFontMetrics, SetsSuperscriptSmallerAndHigher) {
    const Metrics metrics(Testing::makeClientFontInfo(100.0F, TextPositionType::Superscript));
    EXPECT_EQ(metrics.getFontSize(), 100.0F * 0.65F);
    EXPECT_EQ(metrics.getBaseLineShift(), 100.0F * 0.48F);
    EXPECT_EQ(metrics.getAscent(), 0.75F * (100.0F * 0.65F));
    EXPECT_EQ(metrics.getTextWidth("m", Testing::makeClientExtFontInfo()), 100.0F * 0.65F);
}

TEST(UniversalFontMetrics, SetsSubscriptSmallerAndLower) {
    const Metrics metrics(Testing::makeClientFontInfo(100.0F, TextPositionType::Subscript));
    EXPECT_EQ(metrics.getFontSize(), 100.0F * 0.65F);
    EXPECT_EQ(metrics.getBaseLineShift(), 100.0F * -0.14F);
}

TEST(UniversalFontMetrics, AddsUpAdvancesAndLetterSpacing) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    EXPECT_EQ(metrics.getTextWidth("", Testing::makeClientExtFontInfo(5)), 0.0F);
    EXPECT_EQ(metrics.getTextWidth(boost::string_ref(), Testing::makeClientExtFontInfo(5)), 0.0F);
    EXPECT_EQ(metrics.getTextWidth("im", Testing::makeClientExtFontInfo()), 4.0F + 16.0F);
    EXPECT_EQ(metrics.getTextWidth("im", Testing::makeClientExtFontInfo(1.5F)), 4.0F + 1.5F + 16.0F + 1.5F);
    EXPECT_EQ(metrics.getTextWidth("im", Testing::makeClientExtFontInfo(-6.0F)), 8.0F);
    EXPECT_EQ(metrics.getTextWidth("\xE2\x82\xAC", Testing::makeClientExtFontInfo()), 12.0F);
    EXPECT_TRUE(metrics.asked.empty());
}

TEST(UniversalFontMetrics, RequestsASubstituteIfTheMapReturnsGlyph0) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    const ExtFontInfoPtr ext = Testing::makeClientExtFontInfo();
    EXPECT_EQ(metrics.getTextWidth("i*xm", ext), 4.0F + 32.0F + 8.0F + 16.0F);
    const decltype(metrics.asked) expected = {{ext.get(), '*', 0.5F}, {ext.get(), 'x', 0.5F}};
    EXPECT_EQ(metrics.asked, expected);
}

TEST(UniversalFontMetrics, MeasuresIllFormedTextAsReplacementCharacters) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    EXPECT_EQ(metrics.getTextWidth("\xF0\x9F\x98"
                                   "m",
                                   Testing::makeClientExtFontInfo()),
              8.0F + 16.0F);
    ASSERT_EQ(metrics.asked.size(), 1U);
    EXPECT_EQ(std::get<1>(metrics.asked.front()), 0xFFFDU);
}

/// Returns how many characters of the text fit, and how many bytes they take.
std::pair<std::size_t, std::ptrdiff_t>
countChars(const UniversalFontMetrics& metrics, const std::string& text, float width,
           const ExtFontInfoPtr& ext = Testing::makeClientExtFontInfo()) {
    const char* begin = text.data();
    const std::size_t count = metrics.countCharsForWidth(begin, text.data() + text.size(), width, ext);
    return {count, begin - text.data()};
}

using Count = std::pair<std::size_t, std::ptrdiff_t>;

TEST(UniversalFontMetrics, CountsTheCharactersThatFit) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    EXPECT_EQ(countChars(metrics, "mim", 3.9F), Count(0, 0));
    EXPECT_EQ(countChars(metrics, "mim", 16.0F), Count(1, 1)) << "a text of exactly this width fits";
    EXPECT_EQ(countChars(metrics, "mim", 15.999F), Count(0, 0));
    EXPECT_EQ(countChars(metrics, "mim", 20.0F), Count(2, 2));
    EXPECT_EQ(countChars(metrics, "mim", 35.9F), Count(2, 2));
    EXPECT_EQ(countChars(metrics, "mim", 1000.0F), Count(3, 3));
    EXPECT_EQ(countChars(metrics, "", 1000.0F), Count(0, 0));
    EXPECT_EQ(countChars(metrics, "mim", std::numeric_limits<float>::infinity()), Count(3, 3));
    EXPECT_EQ(countChars(metrics, "mim", -1.0F), Count(0, 0));
    EXPECT_EQ(countChars(metrics, "mim", std::numeric_limits<float>::quiet_NaN()), Count(0, 0));
}

TEST(UniversalFontMetrics, CountsMultibyteCharactersAsOne) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    EXPECT_EQ(countChars(metrics, "\xE2\x82\xACi", 12.0F), Count(1, 3));
    EXPECT_EQ(countChars(metrics, "\xE2\x82\xACi", 11.0F), Count(0, 0));
    EXPECT_EQ(countChars(metrics, "\xF0\x9F\x98\xC3", 8.0F), Count(1, 3))
        << "an ill-formed part is a character";
}

TEST(UniversalFontMetrics, CountsLetterSpacingAndSubstitutes) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    EXPECT_EQ(countChars(metrics, "ii", 8.0F, Testing::makeClientExtFontInfo(0.5F)), Count(1, 1));
    EXPECT_EQ(countChars(metrics, "ii", 9.0F, Testing::makeClientExtFontInfo(0.5F)), Count(2, 2));
    EXPECT_EQ(countChars(metrics, "*i", 31.0F), Count(0, 0));
    EXPECT_EQ(countChars(metrics, "*i", 32.0F), Count(1, 1));
}

TEST(UniversalFontMetrics, StopsAtTheFirstCharacterThatDoesNotFit) {
    const Metrics metrics(Testing::makeClientFontInfo(16.0F));
    EXPECT_EQ(countChars(metrics, "imi", 9.0F), Count(1, 1));
    EXPECT_EQ(countChars(metrics, "mii", 9.0F, Testing::makeClientExtFontInfo(-5)), Count(0, 0))
        << "although the whole text would be narrow enough";
}

TEST(UniversalFontMetrics, CountsWithTheWidthsOfGetTextWidth) {
    const Metrics metrics(Testing::makeClientFontInfo(11.7F));
    const ExtFontInfoPtr ext = Testing::makeClientExtFontInfo(0.3F);
    const std::string text = "mimixm0i*\xE2\x82\xACmmiim";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const float width = metrics.getTextWidth(text.substr(0, length), ext);
        const Count fitting = countChars(metrics, text.substr(0, length), width, ext);
        EXPECT_EQ(fitting.second, static_cast<std::ptrdiff_t>(length)) << "its own width is enough";
    }
}

TEST(UniversalFontMetricsDeathTest, AssertsOnANullDescription) {
    FontInfoPtr source = Testing::makeClientFontInfo(10.0F);
    const FontInfoPtr taken = std::move(source);
    VELL_EXPECT_ASSERTION(Metrics{source}, "Utils/Public/Ptr/CheckedPtr:145: assertion failed: _ptr");
}

} // namespace
} // namespace Vell::Gfx
