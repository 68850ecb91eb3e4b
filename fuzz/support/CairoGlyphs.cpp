#include <fuzz/support/CairoGlyphs.h>

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>

namespace Vell::Fuzz {

namespace {

constexpr unsigned int isHuge = 1; ///< wider than any image of cairo
constexpr unsigned int hasNoBuffer = 2;
constexpr unsigned int isUpsideDown = 4; ///< a negative pitch
constexpr unsigned int hasAnyColors = 8; ///< not premultiplied

constexpr unsigned int hugeWidth = 40000;
constexpr unsigned int largestSide = 32767;
constexpr unsigned int bitsPerColor = 32;

/// Returns 0 for modes that no painter supports.
unsigned int getBitsPerPixel(unsigned int pixelMode) {
    switch (pixelMode) {
    case FT_PIXEL_MODE_MONO:
        return 1;
    case FT_PIXEL_MODE_GRAY2:
        return 2;
    case FT_PIXEL_MODE_GRAY4:
        return 4;
    case FT_PIXEL_MODE_GRAY:
        return 8;
    case FT_PIXEL_MODE_LCD: // the engine turns these into words of colour
    case FT_PIXEL_MODE_BGRA:
        return bitsPerColor;
    default:
        return 0;
    }
}

int getRowBytes(unsigned int width, unsigned int pixelMode) {
    return static_cast<int>((width * getBitsPerPixel(pixelMode) + 7) / 8);
}

/// Makes colours such as FreeType makes for BGRA, where no channel exceeds its alpha, and as the engine makes
/// for LCD, where each word is opaque or 0.
void makeValidColors(unsigned int pixelMode, unsigned char* row, std::size_t width) {
    for (unsigned char* pixel = row; pixel != row + width * sizeof(std::uint32_t);
         pixel += sizeof(std::uint32_t)) {
        if (pixelMode == FT_PIXEL_MODE_BGRA) {
            std::for_each(pixel, pixel + 3,
                          [pixel](unsigned char& channel) { channel = std::min(channel, pixel[3]); });
            continue;
        }
        std::uint32_t word = 0;
        std::memcpy(&word, pixel, sizeof(word));
        word = word % 2 != 0 ? word | 0xFF000000U : 0U;
        std::memcpy(pixel, &word, sizeof(word));
    }
}

/// Includes modes beyond the known ones.
constexpr unsigned int modeCount = FT_PIXEL_MODE_BGRA + 3;

} // namespace

ScriptedGlyph::ScriptedGlyph(ByteReader& reader) {
    _image.pixelMode = static_cast<unsigned char>(reader.takeU8() % modeCount);
    const unsigned int width = reader.takeU8();
    const unsigned int rows = reader.takeU8();
    const auto padding = static_cast<signed char>(reader.takeU8());
    const unsigned int flags = reader.takeU8();
    _image.width = (flags & isHuge) != 0 ? hugeWidth : width % 96;
    _image.rows = (flags & isHuge) != 0 ? rows % 3 : rows % 48;
    const int rowBytes = getRowBytes(_image.width, _image.pixelMode);
    const int pitch = std::max(rowBytes + padding / 8, 0);
    _image.pitch = (flags & isUpsideDown) != 0 ? -pitch : pitch;
    const std::size_t rowsBefore = _image.rows > 0 ? _image.rows - 1 : 0;
    _size = static_cast<std::size_t>(pitch) * rowsBefore + static_cast<std::size_t>(rowBytes);
    _buffer = std::make_unique<unsigned char[]>(_size);
    _image.buffer = (flags & hasNoBuffer) != 0 ? nullptr : _buffer.get();
    _hasValidColors = (flags & hasAnyColors) == 0;
    fill(reader.takeU8());
}

bool ScriptedGlyph::isSound() const {
    const bool isEmpty = _image.width == 0 || _image.rows == 0 || _image.buffer == nullptr;
    const bool hasPitch =
        _image.rows <= 1 || std::abs(_image.pitch) >= getRowBytes(_image.width, _image.pixelMode);
    return isEmpty || (getBitsPerPixel(_image.pixelMode) != 0 && _image.width <= largestSide && hasPitch);
}

void ScriptedGlyph::fill(unsigned int content) {
    std::minstd_rand random(content);
    for (std::size_t i = 0; i < _size; ++i) {
        _buffer[i] = static_cast<unsigned char>(random() >> 8);
    }
    if (getBitsPerPixel(_image.pixelMode) == bitsPerColor && _hasValidColors) {
        const auto pitch = static_cast<std::size_t>(std::abs(_image.pitch));
        for (std::size_t row = 0; row < _image.rows && isSound(); ++row) {
            makeValidColors(_image.pixelMode, _buffer.get() + row * pitch, _image.width);
        }
    }
}

} // namespace Vell::Fuzz
