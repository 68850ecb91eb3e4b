#include <FontEngine/Color/Private/FE_ColorBitmap.h>

#include <FontEngine/Color/Private/FE_ColorScaling.h>
#include <FontEngine/Private/FE_CallErrors.h>
#include <FontEngine/Private/FE_PictureBounds.h>
#include <FontLoaders/Public/FreeTypeMemory.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

// Never the outline: loading that has bounds of its own.
constexpr int loadFlags =
    FT_LOAD_COLOR | FT_LOAD_SBITS_ONLY | FT_LOAD_NO_HINTING | FT_LOAD_NO_AUTOHINT | FT_LOAD_IGNORE_TRANSFORM;

/// The largest number of pixels of a bitmap in a font: a square of 4,096 pixels. Fonts in use have bitmaps of
/// a few hundred pixels in each direction.
constexpr std::uint64_t maxStrikePixels = std::uint64_t(1) << 24U;

/// The bitmap of a glyph in a strike, which the face has as its size.
struct StrikeBitmap {
    ColorStrike strike;
    ColorBox box;
};

bool isPictureBounded(FT_Face face, const ColorStrike& strike, FT_UInt glyphIndex) {
    const auto ppemX = static_cast<unsigned int>(strike.ppemX);
    const auto ppemY = static_cast<unsigned int>(strike.ppemY);
    return checkPicture(face, {glyphIndex, ppemX, ppemY, maxStrikePixels}) == PictureVerdict::Bounded;
}

/// Reads only the size of the bitmap: it is not decoded, and takes no memory.
std::optional<StrikeBitmap> findInStrike(FT_Face face, const ColorStrike& strike, FT_UInt glyphIndex) {
    if (!isPictureBounded(face, strike, glyphIndex) ||
        !isCallDone(FT_Select_Size(face, strike.index), "FT_Select_Size") ||
        !isCallDone(FT_Load_Glyph(face, glyphIndex, loadFlags | FT_LOAD_BITMAP_METRICS_ONLY),
                    "FT_Load_Glyph")) {
        return std::nullopt;
    }
    const FT_GlyphSlot slot = face->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    if (slot->format != FT_GLYPH_FORMAT_BITMAP || bitmap.pixel_mode != FT_PIXEL_MODE_BGRA ||
        bitmap.width == 0 || bitmap.rows == 0 ||
        std::uint64_t{bitmap.width} * bitmap.rows > maxStrikePixels) {
        return std::nullopt;
    }
    return StrikeBitmap{strike, {slot->bitmap_left, slot->bitmap_top, bitmap.width, bitmap.rows}};
}

/// A size that is equal but for rounding errors.
bool areEqual(float lhs, float rhs) {
    constexpr float negligible = 1.0F / 128; // half of FreeType's unit
    return std::fabs(lhs - rhs) < negligible;
}

/// Looks into the strikes in the order of preference.
std::optional<StrikeBitmap> findBitmap(const ColorFace& face, unsigned long glyphIndex, float pixelsPerEm) {
    constexpr std::ptrdiff_t maxSearched = 16; // in each direction; a hostile font can have 65,535 strikes
    const auto index = static_cast<FT_UInt>(glyphIndex);
    const auto& strikes = face.getStrikes();
    const auto next = std::find_if(strikes.begin(), strikes.end(), [&](const ColorStrike& strike) {
        return strike.ppemY > pixelsPerEm || areEqual(strike.ppemY, pixelsPerEm);
    });
    for (auto strike = next; strike != strikes.end() && strike - next != maxSearched; ++strike) {
        if (auto found = findInStrike(face.get(), *strike, index)) {
            return found;
        }
    }
    for (auto end = next; end != strikes.begin() && next - end != maxSearched; --end) {
        if (auto found = findInStrike(face.get(), *(end - 1), index)) {
            return found;
        }
    }
    return std::nullopt;
}

ColorScale getScale(const ColorStrike& strike, float pixelsPerEm) {
    const float y = areEqual(strike.ppemY, pixelsPerEm) ? 1.0F : pixelsPerEm / strike.ppemY;
    return {strike.ppemX == strike.ppemY ? y : y * (strike.ppemY / strike.ppemX), y};
}

bool isUnscaled(const ColorScale& scale) {
    return scale.x == 1.0F && scale.y == 1.0F;
}

/// Whether no pixel can be seen. FreeType gives such a bitmap, and no error, for a PNG of another size than
/// the strike says.
bool isTransparent(const ColorGlyphImage& image) {
    const unsigned char* const end = image.buffer + static_cast<std::size_t>(image.pitch) * image.rows;
    return std::all_of(static_cast<const unsigned char*>(image.buffer), end,
                       [](unsigned char byte) { return byte == 0; });
}

void copyRows(const FT_Bitmap& bitmap, ColorGlyphImage& image) {
    for (unsigned int y = 0; y != image.rows; ++y) {
        std::memcpy(image.buffer + y * static_cast<std::ptrdiff_t>(image.pitch),
                    bitmap.buffer + y * static_cast<std::ptrdiff_t>(bitmap.pitch),
                    static_cast<std::size_t>(image.pitch));
    }
}

bool hasMemory(FT_Memory memory, std::size_t bytes) {
    void* const block = memory->alloc(memory, static_cast<long>(bytes));
    if (block != nullptr) {
        memory->free(memory, block);
    }
    return block != nullptr;
}

/// FreeType does not report a lack of memory if it could use an outline instead, so this looks whether there
/// is memory, and tries again.
FT_Error loadWithMemory(FT_Face face, FT_UInt glyphIndex, const ColorBox& box) {
    constexpr std::size_t channels = 4;
    const FT_Error error = FT_Load_Glyph(face, glyphIndex, loadFlags);
    if (error == FT_Err_Ok || error == FT_Err_Out_Of_Memory) {
        return error;
    }
    const std::size_t bytes = channels * box.width * box.rows;
    return hasMemory(face->memory, bytes) ? FT_Load_Glyph(face, glyphIndex, loadFlags) : FT_Err_Out_Of_Memory;
}

/// Decodes the bitmap of the strike that the face has as its size.
std::shared_ptr<ColorGlyphImage> loadBitmap(FT_Face face, FT_UInt glyphIndex, const ColorBox& box) {
    if (!isCallDone(loadWithMemory(face, glyphIndex, box), "FT_Load_Glyph")) {
        return nullptr;
    }
    const FT_Bitmap& bitmap = face->glyph->bitmap;
    if (bitmap.buffer == nullptr || bitmap.pixel_mode != FT_PIXEL_MODE_BGRA || bitmap.width != box.width ||
        bitmap.rows != box.rows) {
        return nullptr;
    }
    auto image = makeColorImage(box);
    copyRows(bitmap, *image);
    return isTransparent(*image) ? nullptr : image;
}

bool canBeSized(const ColorFace& face, unsigned long glyphIndex, float pixelsPerEm) {
    return pixelsPerEm > 0.0F && std::isfinite(pixelsPerEm) &&
           glyphIndex < static_cast<unsigned long>(face.get()->num_glyphs);
}

} // namespace

std::shared_ptr<const ColorGlyphImage> makeColorBitmap(const ColorFace& face, unsigned long glyphIndex,
                                                       float pixelsPerEm) {
    if (!canBeSized(face, glyphIndex, pixelsPerEm)) {
        return nullptr;
    }
    const FontLoaders::FreeTypeOperation operation(FontLoaders::renderingBounds);
    const auto found = findBitmap(face, glyphIndex, pixelsPerEm);
    const ColorScale scale = found ? getScale(found->strike, pixelsPerEm) : ColorScale{};
    if (!found || (!isUnscaled(scale) && !scaleColorBox(found->box, scale))) {
        return nullptr;
    }
    auto image = loadBitmap(face.get(), static_cast<FT_UInt>(glyphIndex), found->box);
    return image == nullptr || isUnscaled(scale) ? image : scaleColorImage(*image, scale);
}

float findColorStrikeSize(const ColorFace& face, unsigned long glyphIndex, float pixelsPerEm) {
    if (!canBeSized(face, glyphIndex, pixelsPerEm)) {
        return 0.0F;
    }
    const FontLoaders::FreeTypeOperation operation(FontLoaders::renderingBounds);
    const auto found = findBitmap(face, glyphIndex, pixelsPerEm);
    return found ? found->strike.ppemY : 0.0F;
}

} // namespace Vell::FontEngine::Internal
