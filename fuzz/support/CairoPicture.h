#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <support/ByteWriter.h>

#include <cstddef>

namespace Vell::Fuzz {

/// Pixels in the harness's own memory, within a frame of bytes that must not change: before the first row,
/// after the last row and between rows.
class CairoPicture {
public:
    CairoPicture(cairo_format_t format, int width, int height);

    /// Makes an image of the pixels, which it must not outlive.
    CairoAdapter::SurfacePtr makeSurface();

    /// Throws Finding if the frame has changed.
    void checkFrame() const;
    void copyPixels(const CairoPicture& other) { _bytes = other._bytes; }
    /// The greatest difference between corresponding bytes. Ignores bytes without a meaning in the format.
    int getGreatestDifference(const CairoPicture& other) const;

    Testing::Bytes& getBytes() { return _bytes; }
    std::size_t getFirstPixel() const { return _stride; }

private:
    bool isInFrame(std::size_t index) const;
    bool hasMeaning(std::size_t index) const;

    cairo_format_t _format;
    int _width;
    int _height;
    std::size_t _rowBytes; ///< of pixels
    std::size_t _stride;
    Testing::Bytes _bytes;
};

} // namespace Vell::Fuzz
