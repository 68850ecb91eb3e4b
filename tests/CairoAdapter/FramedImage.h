#pragma once

#include "CairoSpy.h"
#include "Canvas.h"

#include <algorithm>
#include <cstdlib>

namespace Vell::CairoAdapter::Testing {

/// An image of any format in the test's own memory, within a frame of bytes that must not change: before the
/// first row, after the last row and between rows. Initially it holds the bytes 16, 17 ... repeatedly.
class FramedImage {
public:
    static constexpr int width = 48;
    static constexpr int height = 32;

    explicit FramedImage(cairo_format_t format)
        : bytes(makeBytes(format))
        , surface(adoptSurface(cairo_image_surface_create_for_data(bytes.data() + getStride(format), format,
                                                                   width, height, getStride(format))))
        , _format(format) {}

    bool hasCleanFrame() const {
        const std::vector<unsigned char> original = makeBytes(_format);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            if (bytes[i] != original[i] && isInFrame(i)) {
                return false;
            }
        }
        return true;
    }

    /// Compares the bytes that have a meaning in the format.
    int getGreatestDifference(const FramedImage& other) const {
        int greatest = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const bool isUnused = _format == CAIRO_FORMAT_RGB24 && i % 4 == unusedByte;
            greatest = isUnused ? greatest : std::max(greatest, std::abs(bytes[i] - other.bytes[i]));
        }
        return greatest;
    }

    std::vector<unsigned char> bytes;
    SurfacePtr surface;

private:
    static constexpr std::size_t unusedByte = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? 3 : 0;
    static constexpr int margin = 24;

    static int getStride(cairo_format_t format) {
        return cairo_format_stride_for_width(format, width) + margin;
    }

    static std::vector<unsigned char> makeBytes(cairo_format_t format) {
        std::vector<unsigned char> content(static_cast<std::size_t>(getStride(format)) * (height + 2));
        for (std::size_t i = 0; i < content.size(); ++i) {
            content[i] = static_cast<unsigned char>(16 + i % 240);
        }
        return content;
    }

    bool isInFrame(std::size_t index) const {
        const auto stride = static_cast<std::size_t>(getStride(_format));
        const std::size_t row = index / stride;
        return row == 0 || row > std::size_t{height} || index % stride >= stride - margin;
    }

    cairo_format_t _format;
};

/// A drawing by the adapter, and the same drawing by cairo alone.
struct Comparison {
    int difference; ///< the greatest difference of a byte
    int drawings;   ///< how often the adapter called cairo to draw
    bool isWithinFrame;
};

template <class Draw>
Comparison compareWithCairo(cairo_format_t format, const Draw& draw) {
    const FramedImage image(format);
    CairoSpy::takeDrawingCount();
    draw(image.surface.get());
    const int drawings = CairoSpy::takeDrawingCount();
    const FramedImage reference(format);
    {
        const CairoSpy::LeavesDrawingToCairo leavesDrawingToCairo;
        draw(reference.surface.get());
    }
    cairo_surface_flush(image.surface.get());
    cairo_surface_flush(reference.surface.get());
    return {image.getGreatestDifference(reference), drawings, image.hasCleanFrame()};
}

} // namespace Vell::CairoAdapter::Testing
