#pragma once

#include <CairoAdapter/Public/CairoHandles.h>
#include <support/ByteWriter.h>

#include <cstddef>

namespace Vell::Fuzz {

/// Pixels in memory of the harness's own, in a frame of bytes that nobody may touch: before the first row,
/// behind the last one and between any two.
class CairoPicture {
public:
    CairoPicture(cairo_format_t format, int width, int height);

    /// An image of the pixels. It must not outlive them.
    CairoAdapter::SurfacePtr makeSurface();

    /// Throws Finding when the frame has changed.
    void checkFrame() const;
    void copyPixels(const CairoPicture& other) { _bytes = other._bytes; }
    /// The greatest difference of any byte that means something in the format.
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
