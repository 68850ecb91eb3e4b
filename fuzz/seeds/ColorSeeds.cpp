#include <fuzz/seeds/Seeds.h>

#include <FontEngine/Color/HostilePaints.h>
#include <support/CompoundPictures.h>

namespace Vell::Fuzz {

using Testing::FontBuilder;
using Testing::GlyphPicture;
using Testing::makeGlyphPicture;
using Testing::makeMixedPicture;
using Testing::PictureStrike;

namespace {

constexpr unsigned int side = 8; ///< of the pictures, in pixels

GlyphPicture makePicture(unsigned int glyph, Bytes file, const char* type = "png ") {
    return {glyph, 1, static_cast<int>(side), side, side, std::move(file), type};
}

Bytes buildSbixFont(const std::vector<PictureStrike>& strikes) {
    FontBuilder font = makeTwoBoxFont();
    return font.setTable("sbix", Testing::buildSbix(strikes, font.getGlyphCount())).build();
}

Bytes buildCbdtFont(Testing::CbdtTables tables) {
    FontBuilder font = makeTwoBoxFont();
    font.setTable("CBLC", std::move(tables.cblc)).setTable("CBDT", std::move(tables.cbdt));
    return font.omitTable("glyf").omitTable("loca").build();
}

void addBoth(std::vector<Seed>& seeds, const std::string& name, const std::vector<PictureStrike>& strikes) {
    seeds.push_back(makeFontSeed("sbix" + name, buildSbixFont(strikes)));
    seeds.push_back(makeFontSeed("cbdt" + name, buildCbdtFont(Testing::buildCbdt(strikes))));
}

void addPictureSeeds(std::vector<Seed>& seeds) {
    const Testing::Picture picture = makeMixedPicture(side, side);
    const Bytes png = buildPng(picture);
    addBoth(seeds, "", {{side, {makePicture(0, png), makePicture(1, png), makePicture(2, png)}}});
    addBoth(seeds, "-two-strikes",
            {{4, {makePicture(1, png)}},
             {40, {makePicture(1, png), makeGlyphPicture(2, -9, 30, makeMixedPicture(35, 41))}}});
    addBoth(seeds, "-huge-png", {{side, {makePicture(1, buildMislabelledPng(picture, 60000, 60000))}}});
    addBoth(seeds, "-broken-png", {{side, {makePicture(1, Bytes(png.begin(), png.begin() + 60))}}});
    addBoth(seeds, "-of-one-pixel-per-em", {{1, {makePicture(1, png)}}});
    seeds.push_back(makeFontSeed(
        "cbdt-compound", buildCbdtFont(Testing::buildCompoundCbdt(side, {{2, 2}}, makePicture(2, png)))));
    seeds.push_back(makeFontSeed(
        "sbix-duplicates", buildSbixFont({{side, {makePicture(1, png), makePicture(2, {0, 1}, "dupe")}}})));
    seeds.push_back(makeFontSeed(
        "sbix-cycle",
        buildSbixFont({{side, {makePicture(1, {0, 2}, "dupe"), makePicture(2, {0, 1}, "dupe")}}})));
}

void addPaintSeeds(std::vector<Seed>& seeds) {
    FontSteering steering;
    steering.glyphs[0] = FontEngine::PaintShape::firstFree;
    steering.glyphs[1] = FontEngine::PaintShape::firstFree + 1;
    unsigned int number = 0;
    for (const Bytes& font : FontEngine::makePaintSeeds()) {
        seeds.push_back(makeFontSeed("paints-" + std::to_string(number++), font, steering));
    }
}

} // namespace

std::vector<Seed> makeColorSeeds() {
    std::vector<Seed> seeds;
    addPictureSeeds(seeds);
    addPaintSeeds(seeds);
    return seeds;
}

} // namespace Vell::Fuzz
