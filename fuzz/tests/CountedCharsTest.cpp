#include <fuzz/support/Finding.h>
#include <fuzz/support/TextCalls.h>

#include <gtest/gtest.h>

#include <cstddef>

namespace Vell::Fuzz {

namespace {

/// Every character has a width of 10, but the count is off by `mistake` bytes.
class MistakenMetrics : public Gfx::FontMetrics {
public:
    explicit MistakenMetrics(std::ptrdiff_t mistake)
        : _mistake(mistake) {}

    float getTextWidth(boost::string_ref text, const Testing::ExtFontInfoPtr&) const override {
        return 10.0F * static_cast<float>(text.size());
    }
    std::size_t countCharsForWidth(char const*& begin, char const*, float width,
                                   const Testing::ExtFontInfoPtr&) const override {
        const std::ptrdiff_t count = static_cast<std::ptrdiff_t>(width / 10.0F) + _mistake;
        begin += count;
        return static_cast<std::size_t>(count);
    }
    float getHeight() const override { return 0.0F; }
    float getAscent() const override { return 0.0F; }
    float getDescent() const override { return 0.0F; }
    float getLeading() const override { return 0.0F; }
    float getCapHeight() const override { return 0.0F; }
    float getBaseLineShift() const override { return 0.0F; }
    float getStrikeOutPosition() const override { return 0.0F; }

private:
    std::ptrdiff_t _mistake;
};

void checkCounting(std::ptrdiff_t mistake) {
    checkCountedChars("abcdefgh", 35.0F, Testing::makeExtFontInfo(), MistakenMetrics(mistake));
}

} // namespace

TEST(CountedChars, AreTheLongestPartThatFits) {
    EXPECT_NO_THROW(checkCounting(0));
    EXPECT_THROW(checkCounting(-1), Finding);
    EXPECT_THROW(checkCounting(1), Finding);
    EXPECT_THROW(checkCounting(-4), Finding) << "before the beginning";
    EXPECT_THROW(checkCounting(6), Finding) << "behind the end";
}

} // namespace Vell::Fuzz
