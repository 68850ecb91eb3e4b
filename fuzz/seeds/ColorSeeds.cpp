#include <fuzz/seeds/Seeds.h>

#include <CairoAdapter/Public/CairoHandles.h>

#include <cstdint>

namespace Vell::Fuzz {

using Testing::ByteWriter;
using Testing::FontBuilder;

namespace {

constexpr unsigned int side = 8; ///< of the pictures, in pixels
constexpr unsigned int glyphCount = 3;

/// A picture in half-transparent red.
Bytes makePng() {
    const CairoAdapter::SurfacePtr surface = CairoAdapter::makeImageSurface(side, side);
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(surface.get());
    cairo_set_source_rgba(context.get(), 1.0, 0.0, 0.0, 0.5);
    cairo_paint(context.get());
    Bytes png;
    const auto append = [](void* closure, const unsigned char* bytes, unsigned int count) {
        auto& target = *static_cast<Bytes*>(closure);
        target.insert(target.end(), bytes, bytes + count);
        return CAIRO_STATUS_SUCCESS;
    };
    cairo_surface_write_to_png_stream(surface.get(), append, &png);
    return png;
}

Bytes makeSbix() {
    const Bytes png = makePng();
    ByteWriter writer;
    writer.addU16(1);
    writer.addU16(1);
    writer.addU32(1); // one strike
    writer.addU32(12);
    writer.addU16(side);
    writer.addU16(72);
    const std::size_t glyphBytes = 8 + png.size();
    for (std::size_t glyph = 0; glyph <= glyphCount; ++glyph) {
        writer.addU32(static_cast<std::uint32_t>(4 + 4 * (glyphCount + 1) + glyph * glyphBytes));
    }
    for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
        writer.addI16(1);
        writer.addI16(-2);
        writer.addText("png ");
        writer.addBytes(png);
    }
    return writer.getBytes();
}

void addLineMetrics(ByteWriter& writer) {
    for (const unsigned int byte : {7U, 0xFFU, 8U, 1U, 0U, 0U, 0U, 0U, 7U, 0xFFU, 0U, 0U}) {
        writer.addU8(byte);
    }
}

/// The positions of the pictures in CBDT: one strike, one range of glyphs with 32-bit offsets.
Bytes makeCblc(std::size_t glyphBytes) {
    constexpr std::uint32_t strikeBytes = 48;
    constexpr std::uint32_t arrayAt = 8 + strikeBytes;
    ByteWriter writer;
    writer.addU32(0x00030000);
    writer.addU32(1);
    for (const std::uint32_t field : {arrayAt, 8U + 8U + 4U * (glyphCount + 1), 1U, 0U}) {
        writer.addU32(field);
    }
    addLineMetrics(writer);
    addLineMetrics(writer);
    writer.addU16(0);
    writer.addU16(glyphCount - 1);
    for (const unsigned int byte : {side, side, 32U, 1U}) { // ppem, bits, horizontal metrics
        writer.addU8(byte);
    }
    writer.addU16(0);
    writer.addU16(glyphCount - 1);
    writer.addU32(8);
    writer.addU16(1);  // 32-bit offsets
    writer.addU16(17); // small metrics and a PNG
    writer.addU32(4);
    for (std::size_t glyph = 0; glyph <= glyphCount; ++glyph) {
        writer.addU32(static_cast<std::uint32_t>(glyph * glyphBytes));
    }
    return writer.getBytes();
}

Bytes makeCbdt(const Bytes& png) {
    ByteWriter writer;
    writer.addU32(0x00030000);
    for (unsigned int glyph = 0; glyph < glyphCount; ++glyph) {
        for (const unsigned int byte : {side, side, 0U, 7U, side + 1}) {
            writer.addU8(byte);
        }
        writer.addU32(static_cast<std::uint32_t>(png.size()));
        writer.addBytes(png);
    }
    return writer.getBytes();
}

FontBuilder makeCbdtFont() {
    const Bytes png = makePng();
    FontBuilder font = makeTwoBoxFont();
    font.setTable("CBLC", makeCblc(9 + png.size())).setTable("CBDT", makeCbdt(png));
    return font.omitTable("glyf").omitTable("loca");
}

} // namespace

std::vector<Seed> makeColorSeeds() {
    return {makeFontSeed("sbix", makeTwoBoxFont().setTable("sbix", makeSbix()).build()),
            makeFontSeed("cbdt", makeCbdtFont().build())};
}

} // namespace Vell::Fuzz
