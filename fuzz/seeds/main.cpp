// fontengine_fuzz_seeds <folder>: writes the seeds of every harness into a folder of its name.

#include <fuzz/seeds/Seeds.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace {

using Vell::Fuzz::Seed;

/// Seeds that need memory or time without a bound as long as nothing in the engine sets one. They are written
/// to a folder of their own, which nothing runs.
constexpr std::string_view unboundedSeeds[] = {"absurd-9-0",
                                               "absurd-scale-2",
                                               "cff-busy",
                                               "absurd-size-9",
                                               "composite-endless-doubling",
                                               "composite-highest-tower",
                                               "giant-glyph",
                                               "woff-gigabyte",
                                               "giant-glyph-small",
                                               "composite-endless-doubling-of-points",
                                               "woff-four-gigabytes"};

bool isUnbounded(const Seed& seed) {
    return std::find(std::begin(unboundedSeeds), std::end(unboundedSeeds), seed.name) !=
           std::end(unboundedSeeds);
}

void write(const std::filesystem::path& folder, const std::vector<Seed>& seeds) {
    std::filesystem::create_directories(folder);
    for (const Seed& seed : seeds) {
        std::ofstream file(folder / seed.name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(seed.bytes.data()),
                   static_cast<std::streamsize>(seed.bytes.size()));
        if (!file.flush()) {
            throw std::runtime_error("cannot write " + (folder / seed.name).string());
        }
    }
}

void writeBounded(const std::filesystem::path& folder, const std::string& harness, std::vector<Seed> seeds) {
    const auto firstUnbounded = std::stable_partition(seeds.begin(), seeds.end(),
                                                      [](const Seed& seed) { return !isUnbounded(seed); });
    write(folder / "unbounded" / harness, {firstUnbounded, seeds.end()});
    seeds.erase(firstUnbounded, seeds.end());
    write(folder / harness, seeds);
}

void writeAll(const std::filesystem::path& folder) {
    writeBounded(folder, "font", Vell::Fuzz::makeFontSeeds());
    writeBounded(folder, "font", Vell::Fuzz::makeCffSeeds());
    writeBounded(folder, "font", Vell::Fuzz::makeCharMapSeeds());
    writeBounded(folder, "font", Vell::Fuzz::makeCompositeSeeds());
    writeBounded(folder, "font", Vell::Fuzz::makeHostileSeeds());
    writeBounded(folder, "text", Vell::Fuzz::makeTextSeeds());
    writeBounded(folder, "cache", Vell::Fuzz::makeCacheSeeds());
    writeBounded(folder, "sfnt", Vell::Fuzz::makeSfntSeeds());
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: fontengine_fuzz_seeds <folder>\n");
        return 2;
    }
    try {
        writeAll(arguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fontengine_fuzz_seeds: %s\n", error.what());
        return 1;
    }
}
