#pragma once

#include <fuzz/support/FontScript.h>
#include <support/FontBuilder.h>

#include <filesystem>
#include <string>
#include <vector>

/// The inputs that the fuzzers start from and that the replay runs.
namespace Vell::Fuzz {

using Testing::Bytes;

struct Seed {
    std::string name; ///< the file's name
    Bytes bytes;
};

/// How a font seed is asked for its glyphs: the fields of FontScript as bytes. The first byte of
/// the size is its whole part; factors are in 1/16384.
struct FontSteering {
    unsigned int flags = 0;
    unsigned int renderMode = 0; ///< 0 grey, 1 LCD, 2 light, 3 mono, 4 vertical LCD
    unsigned int size = 16 << 8;
    unsigned int scaleX = 1 << 14;
    unsigned int scaleY = 1 << 14;
    unsigned int ratio = 1 << 14;
    unsigned int offset = 0;
    unsigned int character = 0; ///< 0 a letter, 1 an underscore
    unsigned int glyphs[2] = {1, 2};
    unsigned int services = Service::all;
};

Seed makeFontSeed(std::string name, const Bytes& file, const FontSteering& steering = {});
Seed makeSfntSeed(std::string name, unsigned char faceIndex, const Bytes& file);

/// The font file with the table at its end and without that table's last bytes: who reads on reads out of
/// bounds.
Bytes moveToEnd(Bytes file, const std::string& tag, std::size_t missingBytes);

/// The font file with the signature of fonts that have PostScript outlines.
Bytes signAsCff(Bytes file);

/// A font of two boxes: A and the underscore.
Testing::FontBuilder makeTwoBoxFont();

/// A font of boxes: A to Z, the underscore, a blank and an accented letter.
Testing::FontBuilder makeBoxFont(const std::string& family = "Fuzzed");

/// Font files as the harnesses that take fonts want them.
struct FurtherSeeds {
    std::vector<Seed> font;
    std::vector<Seed> sfnt;
};
/// All files in the folder and in the folders in it, whether or not they are fonts.
FurtherSeeds readFurtherSeeds(const std::filesystem::path& folder);

std::vector<Seed> makeFontSeeds();      ///< fonts such as are in use
std::vector<Seed> makeCffSeeds();       ///< fonts with PostScript outlines
std::vector<Seed> makeCharMapSeeds();   ///< fonts in every charmap format
std::vector<Seed> makeCompositeSeeds(); ///< fonts with glyphs made of glyphs
std::vector<Seed> makeHostileSeeds();   ///< fonts that ask for too much
std::vector<Seed> makeWrappedSeeds();   ///< WOFF, WOFF2, Type 42
std::vector<Seed> makeFormatSeeds();    ///< PCF, PFR, CID-keyed Type 1
std::vector<Seed> makeColorSeeds();     ///< fonts with pictures for glyphs
std::vector<Seed> makeVariableSeeds();  ///< fonts with axes
std::vector<Seed> makeCairoSeeds();
std::vector<Seed> makeTextSeeds();
std::vector<Seed> makeCacheSeeds();
std::vector<Seed> makeSfntSeeds();

} // namespace Vell::Fuzz
