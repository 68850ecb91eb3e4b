#include <FontEngine/GlyphKeyFields.h>

#include <support/Threads.h>

#include <gtest/gtest.h>

#include <vector>

namespace Vell::FontEngine {
namespace {

TEST(SharedKeys, HashTheSameOnEightThreadsAtOnce) {
    constexpr unsigned int sharers = 8;
    using Hashes = std::vector<std::vector<std::uint64_t>>;
    for (int round = 0; round < 100; ++round) {
        const ColoredBitmapGlyphInfo key = makeHashedFields().makeColored();
        const BitmapGlyphInfo& bitmapKey = key;
        const GlyphInfo& outlineKey = key;
        Hashes hashes(sharers);
        Testing::runOnThreads(sharers, [&](unsigned int thread) {
            const ColoredBitmapGlyphInfo copy(key); // while others hash the original
            hashes[thread] = {
                outlineKey.hash(),    bitmapKey.hash(), key.hash(), copy.hash(), key.getFaceInfo()->getHash(),
                key == copy ? 1U : 0U};
        });
        const std::vector<std::uint64_t> expected = {0x73CC07A02F13733C, 0x4653F0FAEA8A898E,
                                                     0x7EC5E218F99CFE4C, 0x7EC5E218F99CFE4C,
                                                     0x6BFC7765CA811BE7, 1};
        ASSERT_EQ(hashes, Hashes(sharers, expected));
    }
}

} // namespace
} // namespace Vell::FontEngine
