#include "ExampleProcess.h"
#include "Picture.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <string>

namespace Vell::Examples::Testing {

namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using Vell::Testing::TemporaryFolder;

/// Pixels of the text that it covers entirely.
int countCovered(const Picture& picture) {
    constexpr std::uint32_t covered = 0xFF143CA0;
    int count = 0;
    for (int y = 0; y < picture.getHeight(); ++y) {
        for (int x = 0; x < picture.getWidth(); ++x) {
            count += picture.getPixel(x, y) == covered ? 1 : 0;
        }
    }
    return count;
}

TEST(MovingAxis, KeepsItsCachesWithinTheirLimits) {
    const TemporaryFolder folder;
    ASSERT_EQ(runExample("moving-axis", {"--frames", "1", folder.getPath("light.png")}).status, 0);
    const auto result = runExample("moving-axis", {"--frames", "51", folder.getPath("heavy.png")});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, ContainsRegex("font files: 8 entries, [0-9]+ hits, [0-9]+ misses, [1-9]"));
    EXPECT_THAT(result.out, ContainsRegex("\nfaces: 8 entries, [0-9]+ hits, [0-9]+ misses, [1-9]"));
    const std::size_t bitmaps = result.out.find("\nbitmaps: ");
    ASSERT_NE(bitmaps, std::string::npos) << result.out;
    int evictions = 0;
    int bytes = 0;
    ASSERT_EQ(std::sscanf(result.out.c_str() + bitmaps,
                          "\nbitmaps: %*d entries, %*d hits, %*d misses, %d evictions, %d of 65536 bytes",
                          &evictions, &bytes),
              2)
        << result.out;
    EXPECT_GT(evictions, 100);
    EXPECT_GT(bytes, 32768);
    EXPECT_LE(bytes, 65536);
    EXPECT_GT(countCovered(Picture(folder.getPath("heavy.png"))),
              3 * countCovered(Picture(folder.getPath("light.png"))));
}

TEST(MovingAxis, SaysWhatFailed) {
    const auto result = runExample("moving-axis", {"--frames", "1", "/no/such/folder/picture.png"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("moving-axis: "));
}

} // namespace

} // namespace Vell::Examples::Testing
