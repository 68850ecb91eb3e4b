// fontengine_fuzz_seeds <folder>
//     Writes the seeds of each harness into a subfolder with the name of the harness.
// fontengine_fuzz_seeds <folder> <folder of fonts>...
//     Writes the files in these folders as seeds instead.

#include <fuzz/seeds/Seeds.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

using Vell::Fuzz::Seed;

/// The longest input that fuzz/run.sh allows for fonts. Only the replay runs longer ones.
constexpr std::size_t longestFuzzed = 150000;

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

void writeFontSeeds(const std::filesystem::path& folder, std::vector<Seed> seeds) {
    const auto firstLong = std::partition(
        seeds.begin(), seeds.end(), [](const Seed& seed) { return seed.bytes.size() <= longestFuzzed; });
    write(folder / "long-font", {firstLong, seeds.end()});
    write(folder / "font", {seeds.begin(), firstLong});
}

void writeAll(const std::filesystem::path& folder) {
    for (const auto makeSeeds :
         {Vell::Fuzz::makeFontSeeds, Vell::Fuzz::makeCffSeeds, Vell::Fuzz::makeCharMapSeeds,
          Vell::Fuzz::makeCompositeSeeds, Vell::Fuzz::makeHostileSeeds, Vell::Fuzz::makeWrappedSeeds,
          Vell::Fuzz::makeFormatSeeds, Vell::Fuzz::makeColorSeeds, Vell::Fuzz::makeVariableSeeds}) {
        writeFontSeeds(folder, makeSeeds());
    }
    write(folder / "cairo", Vell::Fuzz::makeCairoSeeds());
    write(folder / "text", Vell::Fuzz::makeTextSeeds());
    write(folder / "cache", Vell::Fuzz::makeCacheSeeds());
    write(folder / "sfnt", Vell::Fuzz::makeSfntSeeds());
    write(folder / "shape", Vell::Fuzz::makeShapeSeeds());
    write(folder / "vary", Vell::Fuzz::makeVarySeeds());
}

void writeFurther(const std::filesystem::path& folder, const char* fonts) {
    const Vell::Fuzz::FurtherSeeds seeds = Vell::Fuzz::readFurtherSeeds(fonts);
    write(folder / "font", seeds.font);
    write(folder / "sfnt", seeds.sfnt);
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fprintf(stderr, "usage: fontengine_fuzz_seeds <folder> [<folder of fonts>...]\n");
        return 2;
    }
    try {
        if (count == 2) {
            writeAll(arguments[1]);
        }
        for (int i = 2; i < count; ++i) {
            writeFurther(arguments[1], arguments[i]);
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "fontengine_fuzz_seeds: %s\n", error.what());
        return 1;
    }
}
