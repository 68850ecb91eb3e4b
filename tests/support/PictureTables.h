#pragma once

#include <support/ByteWriter.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace Vell::Testing {

/// Red, green, blue and alpha, not premultiplied.
using Rgba = std::array<unsigned char, 4>;

/// Rows of pixels, the top row first.
struct Picture {
    unsigned int width;
    unsigned int rows;
    std::vector<Rgba> pixels;
};

Picture makeFlatPicture(unsigned int width, unsigned int rows, const Rgba& color);
/// A picture in which no two neighbours are equal, some of them half transparent.
Picture makeMixedPicture(unsigned int width, unsigned int rows);

/// Writes a PNG file with 8 bits a channel and no compression.
Bytes buildPng(const Picture& picture);
/// The same picture with another size in its header.
Bytes buildMislabelledPng(const Picture& picture, std::uint32_t width, std::uint32_t rows);

/// Adds a chunk to a PNG file, before the pixels.
Bytes addPngChunk(const Bytes& png, const std::string& type, const Bytes& content);

/// A picture that a font has for a glyph. The distances are in pixels, from the origin to the left edge and
/// up to the top edge.
struct GlyphPicture {
    unsigned int glyph;
    int left;
    int top;
    unsigned int width;
    unsigned int rows;
    Bytes file;
    std::string type = "png "; ///< only sbix has types
};

GlyphPicture makeGlyphPicture(unsigned int glyph, int left, int top, const Picture& picture);

/// The small metrics of CBDT: extent, bearings, and the width as the advance.
void addPictureMetrics(ByteWriter& writer, const GlyphPicture& picture);

struct PictureStrike {
    unsigned int ppem;
    std::vector<GlyphPicture> pictures; ///< in the order of the glyphs
    /// Of the positions in CBLC: 1 to 5. With 2 and 5, all pictures have the place and extent of the first
    /// one and files of one length, and with 2 no glyph between them lacks a picture.
    unsigned int indexFormat = 1;
};

/// Builds the sbix table.
Bytes buildSbix(const std::vector<PictureStrike>& strikes, unsigned int glyphCount);

struct CbdtTables {
    Bytes cblc;
    Bytes cbdt;
};

/// Builds the tables of bitmaps, with the pictures as PNG files.
CbdtTables buildCbdt(const std::vector<PictureStrike>& strikes);

} // namespace Vell::Testing
