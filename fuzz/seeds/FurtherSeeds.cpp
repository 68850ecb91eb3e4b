#include <fuzz/seeds/Seeds.h>

#include <fuzz/support/InputFile.h>

namespace Vell::Fuzz {

namespace {

/// Style, render mode, size and glyphs that differ from the default steering.
FontSteering makeOtherSteering() {
    FontSteering steering;
    steering.flags = 3;
    steering.renderMode = 1;
    steering.size = 11 << 8;
    steering.scaleX = 0x5000;
    steering.ratio = 0x6000;
    steering.offset = 20;
    steering.character = 1;
    steering.glyphs[0] = 3;
    steering.glyphs[1] = 5;
    return steering;
}

} // namespace

FurtherSeeds readFurtherSeeds(const std::filesystem::path& folder) {
    FurtherSeeds seeds;
    for (const std::filesystem::path& path : listInputs(folder)) {
        const std::string name = path.filename().string();
        const Bytes file = readInput(path);
        seeds.font.push_back(makeFontSeed(name, file));
        seeds.font.push_back(makeFontSeed(name + "-styled", file, makeOtherSteering()));
        seeds.sfnt.push_back(makeSfntSeed(name, 0, file));
    }
    return seeds;
}

} // namespace Vell::Fuzz
