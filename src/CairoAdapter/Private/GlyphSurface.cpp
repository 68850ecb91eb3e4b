#include <CairoAdapter/Private/GlyphSurface.h>

#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Public/CairoHandles.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>

namespace Vell::CairoAdapter::Internal {

namespace {

using RowReader = void (*)(const unsigned char* from, std::size_t width, unsigned char* to);

/// Rows of 1, 2 or 4 bits per pixel, the most significant bits first. The greatest value becomes 255.
template <unsigned int bits>
void readPackedCoverage(const unsigned char* from, std::size_t width, unsigned char* to) {
    constexpr unsigned int pixelsInByte = 8 / bits;
    constexpr unsigned int mask = (1U << bits) - 1;
    for (std::size_t x = 0; x < width; ++x) {
        const unsigned int shift = (pixelsInByte - 1 - static_cast<unsigned int>(x % pixelsInByte)) * bits;
        to[x] = static_cast<unsigned char>((from[x / pixelsInByte] >> shift & mask) * (255 / mask));
    }
}

void readCoverage(const unsigned char* from, std::size_t width, unsigned char* to) {
    std::memcpy(to, from, width);
}

/// The words of a coloured image are those of cairo: alpha in the highest byte, in the machine's byte order.
void readWords(const unsigned char* from, std::size_t width, unsigned char* to) {
    std::memcpy(to, from, width * sizeof(std::uint32_t));
}

/// The same colours byte by byte: blue, green, red, alpha on every machine.
void readBgra(const unsigned char* from, std::size_t width, unsigned char* to) {
    for (std::size_t x = 0; x < width; ++x) {
        const unsigned char* bgra = from + x * sizeof(std::uint32_t);
        const std::uint32_t word = std::uint32_t{bgra[3]} << 24 | std::uint32_t{bgra[2]} << 16 |
                                   std::uint32_t{bgra[1]} << 8 | std::uint32_t{bgra[0]};
        std::memcpy(to + x * sizeof(word), &word, sizeof(word));
    }
}

struct PixelLayout {
    unsigned char pixelMode;
    unsigned int bitsPerPixel;
    cairo_format_t format;
    RowReader readRow;
};

constexpr PixelLayout pixelLayouts[] = {
    {FT_PIXEL_MODE_MONO, 1, CAIRO_FORMAT_A8, readPackedCoverage<1>},
    {FT_PIXEL_MODE_GRAY2, 2, CAIRO_FORMAT_A8, readPackedCoverage<2>},
    {FT_PIXEL_MODE_GRAY4, 4, CAIRO_FORMAT_A8, readPackedCoverage<4>},
    {FT_PIXEL_MODE_GRAY, 8, CAIRO_FORMAT_A8, readCoverage},
    {FT_PIXEL_MODE_LCD, 32, CAIRO_FORMAT_ARGB32, readWords},
    {FT_PIXEL_MODE_BGRA, 32, CAIRO_FORMAT_ARGB32, readBgra},
};

const PixelLayout& getPixelLayout(unsigned char pixelMode) {
    const auto* layout =
        std::find_if(std::begin(pixelLayouts), std::end(pixelLayouts),
                     [pixelMode](const PixelLayout& candidate) { return candidate.pixelMode == pixelMode; });
    if (layout == std::end(pixelLayouts)) {
        throw CairoAdapterException("unknown pixel mode of a glyph bitmap: " + std::to_string(pixelMode));
    }
    return *layout;
}

/// A single row needs no pitch.
void checkPitch(const FontEngine::BitmapGlyphImage& image, const PixelLayout& layout) {
    const std::int64_t needed = (std::int64_t{image.width} * layout.bitsPerPixel + 7) / 8;
    if (image.rows > 1 && std::abs(std::int64_t{image.pitch}) < needed) {
        throw CairoAdapterException(
            "the pitch of a glyph bitmap is shorter than its rows: " + std::to_string(image.pitch) + " for " +
            std::to_string(needed) + " bytes");
    }
}

const unsigned char* getTopRow(const FontEngine::BitmapGlyphImage& image) {
    const std::ptrdiff_t pitch = image.pitch;
    return pitch < 0 ? image.buffer - pitch * static_cast<std::ptrdiff_t>(image.rows - 1) : image.buffer;
}

/// cairo takes sizes as int. It refuses those that are too large for an image.
SurfacePtr makeSurface(const FontEngine::BitmapGlyphImage& image, cairo_format_t format) {
    constexpr unsigned int max = std::numeric_limits<int>::max();
    return adoptSurface(cairo_image_surface_create(format, static_cast<int>(std::min(image.width, max)),
                                                   static_cast<int>(std::min(image.rows, max))));
}

} // namespace

GlyphSurface makeGlyphSurface(const FontEngine::BitmapGlyphImage& image) {
    const PixelLayout& layout = getPixelLayout(image.pixelMode);
    checkPitch(image, layout);
    GlyphSurface result{makeSurface(image, layout.format), layout.format == CAIRO_FORMAT_A8};
    unsigned char* pixels = cairo_image_surface_get_data(result.surface.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(result.surface.get());
    const unsigned char* topRow = getTopRow(image);
    for (std::ptrdiff_t row = 0; row < static_cast<std::ptrdiff_t>(image.rows); ++row) {
        layout.readRow(topRow + row * image.pitch, image.width, pixels + row * stride);
    }
    cairo_surface_mark_dirty(result.surface.get());
    return result;
}

GlyphSurface makeColoredSurface(const GlyphSurface& coverage, const cinder::ColorAT<unsigned char>& color) {
    cairo_surface_t* const mask = coverage.surface.get();
    GlyphSurface result{
        makeImageSurface(cairo_image_surface_get_width(mask), cairo_image_surface_get_height(mask)), false};
    const ContextPtr context = makeContext(result.surface.get());
    setSource(context.get(), color);
    cairo_mask_surface(context.get(), mask, 0.0, 0.0);
    throwIfFailed(cairo_status(context.get()));
    return result;
}

} // namespace Vell::CairoAdapter::Internal
