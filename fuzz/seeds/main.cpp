// fontengine_fuzz_seeds <folder>: writes the seeds of every harness into a folder of its name.

#include <fuzz/seeds/Seeds.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

using Vell::Fuzz::Seed;

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

void writeAll(const std::filesystem::path& folder) {
    write(folder / "font", Vell::Fuzz::makeFontSeeds());
    write(folder / "font", Vell::Fuzz::makeCffSeeds());
    write(folder / "font", Vell::Fuzz::makeCharMapSeeds());
    write(folder / "font", Vell::Fuzz::makeCompositeSeeds());
    write(folder / "font", Vell::Fuzz::makeHostileSeeds());
    write(folder / "text", Vell::Fuzz::makeTextSeeds());
    write(folder / "cache", Vell::Fuzz::makeCacheSeeds());
    write(folder / "sfnt", Vell::Fuzz::makeSfntSeeds());
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
