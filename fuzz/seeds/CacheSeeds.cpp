#include <fuzz/seeds/Seeds.h>

#include <random>
#include <utility>

namespace Vell::Fuzz {

namespace {

Seed makeStream(std::string name, unsigned char maxEntries, unsigned int maxBytes, std::size_t operations) {
    std::mt19937 random(static_cast<unsigned int>(operations) + maxEntries);
    Bytes bytes = {maxEntries, static_cast<unsigned char>(maxBytes >> 8),
                   static_cast<unsigned char>(maxBytes)};
    for (std::size_t i = 0; i < 3 * operations; ++i) {
        bytes.push_back(static_cast<unsigned char>(random()));
    }
    return {std::move(name), bytes};
}

} // namespace

std::vector<Seed> makeCacheSeeds() {
    return {makeStream("unlimited", 0, 0, 300),          makeStream("one-entry", 1, 0, 300),
            makeStream("eight-entries", 8, 0, 1000),     makeStream("few-bytes", 0, 100, 1000),
            makeStream("more-bytes", 0, 216 + 12, 1000), makeStream("both-limits", 5, 200, 1000),
            makeStream("no-operations", 3, 3, 0)};
}

} // namespace Vell::Fuzz
