#pragma once

#include <fuzz/support/FontScript.h>
#include <support/FontBuilder.h>

#include <filesystem>
#include <string>
#include <vector>

/// The inputs that the fuzzers start from. The replay runs them as well.
namespace Vell::Fuzz {

using Testing::Bytes;

struct Seed {
    std::string name; ///< of the file
    Bytes bytes;
};

constexpr unsigned int oneFold = 1 << 14; ///< the factor 1 in the units of ByteReader::takeFactor

/// How glyphs are requested from a font seed: the fields of FontScript as bytes. The first byte of
/// the size is its integer part.
struct FontSteering {
    unsigned int flags = 0;
    unsigned int renderMode = 0; ///< 0 grey, 1 LCD, 2 light, 3 mono, 4 vertical LCD
    unsigned int size = 16 << 8;
    unsigned int scaleX = oneFold;
    unsigned int scaleY = oneFold;
    unsigned int ratio = oneFold;
    unsigned int offset = 0;
    unsigned int character = 0; ///< 0 a letter, 1 an underscore
    unsigned int glyphs[2] = {1, 2};
    unsigned int services = Service::all;
};

Seed makeFontSeed(std::string name, const Bytes& file, const FontSteering& steering = {});
Seed makeSfntSeed(std::string name, unsigned char faceIndex, const Bytes& file);

/// Moves the table to the end of the font file and cuts off its last bytes, so that they are out of bounds.
Bytes moveToEnd(Bytes file, const std::string& tag, std::size_t missingBytes);

/// Gives the font file the signature of fonts with PostScript outlines.
Bytes signAsCff(Bytes file);

/// A font with two boxes: A and the underscore.
Testing::FontBuilder makeTwoBoxFont();

/// A font with boxes for A to Z, the underscore and an accented letter, and with a blank.
Testing::FontBuilder makeBoxFont(const std::string& family = "Fuzzed");

/// Font files as seeds of the harnesses that take fonts.
struct FurtherSeeds {
    std::vector<Seed> font;
    std::vector<Seed> sfnt;
};
/// Reads all files below the folder, whether or not they are fonts.
FurtherSeeds readFurtherSeeds(const std::filesystem::path& folder);

std::vector<Seed> makeFontSeeds();      ///< ordinary fonts
std::vector<Seed> makeCffSeeds();       ///< fonts with PostScript outlines
std::vector<Seed> makeCharMapSeeds();   ///< fonts in every charmap format
std::vector<Seed> makeCompositeSeeds(); ///< fonts with composite glyphs
std::vector<Seed> makeHostileSeeds();   ///< fonts that demand too much
std::vector<Seed> makeWrappedSeeds();   ///< WOFF, WOFF2, Type 42
std::vector<Seed> makeFormatSeeds();    ///< PCF, PFR, CID-keyed Type 1
std::vector<Seed> makeColorSeeds();     ///< fonts with pictures and paint graphs as glyphs
std::vector<Seed> makeVariableSeeds();  ///< variable fonts
std::vector<Seed> makeCairoSeeds();
std::vector<Seed> makeTextSeeds();
std::vector<Seed> makeCacheSeeds();
std::vector<Seed> makeSfntSeeds();
std::vector<Seed> makeShapeSeeds();
std::vector<Seed> makeVarySeeds();

} // namespace Vell::Fuzz
