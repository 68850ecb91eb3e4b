#pragma once

#include <fuzz/support/ByteReader.h>

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <Gfx/Public/FontInfo.h>

#include <array>

namespace Vell::Fuzz {

/// What a run does with a fuzzed font, as bits.
namespace Service {
constexpr unsigned int metrics = 1;      ///< measures the line and counts characters
constexpr unsigned int bitmaps = 2;      ///< renders and colours the glyphs
constexpr unsigned int outlines = 4;     ///< requests the paths of the glyphs
constexpr unsigned int rasterText = 8;   ///< draws a text as bitmaps
constexpr unsigned int vectorText = 16;  ///< draws the text as paths
constexpr unsigned int cornerCases = 32; ///< includes the first, the last and a missing glyph
constexpr unsigned int colors = 64;      ///< requests the glyphs in colour
constexpr unsigned int all = 127;
} // namespace Service

/// How glyphs are requested from a fuzzed font: the 17 bytes before the file, in this order.
struct FontScript {
    static constexpr std::size_t size = 17;

    explicit FontScript(ByteReader& reader);

    FontEngine::BitmapGlyphInfo makeKey(const FontEngine::FontFace& face,
                                        const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                                        unsigned long glyphIndex) const;

    bool asksFor(unsigned int service) const { return (services & service) != 0; }

    // 1 byte of flags: 1 bold, 2 italic, 4 flipped, 8 last, 16 and 32 the position type
    bool isBold;
    bool isItalic;
    bool isFlipped;
    bool isLast;
    Gfx::TextPositionType position;
    FT_Render_Mode renderMode;          // 1 byte
    float fontSize;                     // 2 bytes, a measure
    cinder::Vec2<float> scale;          // 2 factors of 2 bytes
    float devicePixelRatio;             // a factor
    unsigned char offset;               // 1 byte
    unsigned int character;             // 1 byte: one of those that the engine treats specially
    std::array<unsigned int, 2> glyphs; // 2 bytes each
    unsigned int services;              // 1 byte, bits of Service
};

} // namespace Vell::Fuzz
