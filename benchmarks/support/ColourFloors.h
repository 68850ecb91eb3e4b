#pragma once

#include <FontEngine/FontEngine.h>

#include FT_GLYPH_H

#include <array>
#include <cstdint>
#include <memory>

/// Ways to colour a sub-pixel bitmap: text over white is blended in a gamma-encoded space, and the lightest
/// pixels become transparent. All of them give the same pixels.
namespace Vell::Benchmarks {

using Image = FontEngine::BitmapGlyphImageWithDeleter;
using Color = cinder::ColorAT<unsigned char>;

/// Maps a coverage to the result for each channel of one colour. The low 32 bits hold it at its place in a
/// pixel, the high 32 bits as a number: the sum over three channels is the pixel and its lightness.
struct ColorTables {
    explicit ColorTables(const Color& color);

    std::array<std::array<std::uint64_t, 256>, 3> channels;
};

/// Computes three powers for each pixel, as the rule is written.
std::shared_ptr<Image> colorByPowers(const FT_BitmapGlyphRec_& glyph, const Color& color);
/// Looks the powers up in one table for all colours.
std::shared_ptr<Image> colorByDecodeTable(const FT_BitmapGlyphRec_& glyph, const Color& color);
/// Looks everything up in tables made for the colour.
std::shared_ptr<Image> colorByColorTables(const FT_BitmapGlyphRec_& glyph, const ColorTables& tables);

} // namespace Vell::Benchmarks
