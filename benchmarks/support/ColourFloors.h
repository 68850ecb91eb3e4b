#pragma once

#include <FontEngine/FontEngine.h>

#include FT_GLYPH_H

#include <array>
#include <cstdint>
#include <memory>

/// Ways of colouring a sub-pixel bitmap: text over white, blended in a gamma-encoded space, the lightest
/// pixels transparent. All give the same pixels.
namespace Vell::Benchmarks {

using Image = FontEngine::BitmapGlyphImageWithDeleter;
using Color = cinder::ColorAT<unsigned char>;

/// From a coverage to what is seen of it, for each channel of one colour: the channel at its place in a
/// pixel, and above the 32 bits once more as a number. The sum over three channels is the pixel and its
/// lightness.
struct ColorTables {
    explicit ColorTables(const Color& color);

    std::array<std::array<std::uint64_t, 256>, 3> channels;
};

/// Three powers for each pixel, as the rule is written.
std::shared_ptr<Image> colorByPowers(const FT_BitmapGlyphRec_& glyph, const Color& color);
/// The powers looked up in one table for all colours.
std::shared_ptr<Image> colorByDecodeTable(const FT_BitmapGlyphRec_& glyph, const Color& color);
/// Everything looked up in tables that were made for the colour.
std::shared_ptr<Image> colorByColorTables(const FT_BitmapGlyphRec_& glyph, const ColorTables& tables);

} // namespace Vell::Benchmarks
