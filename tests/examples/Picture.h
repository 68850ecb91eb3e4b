#pragma once

#include <CairoAdapter/CairoAdapter.h>

#include <cstdint>
#include <string>

namespace Vell::Examples::Testing {

/// The smallest box around pixels, right and bottom exclusive; all 0 where there are none.
struct InkBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// A picture read back from a file.
class Picture {
public:
    /// Throws CairoAdapterException when the file is no PNG.
    explicit Picture(const std::string& path);

    int getWidth() const { return cairo_image_surface_get_width(_surface.get()); }
    int getHeight() const { return cairo_image_surface_get_height(_surface.get()); }

    /// A << 24 | R << 16 | G << 8 | B, premultiplied; opaque where the file has no alpha.
    std::uint32_t getPixel(int x, int y) const;

    /// The box and the number of the pixels from column `left` to before `right` that differ from the top
    /// left pixel.
    InkBox getInkBox(int left, int right) const;
    InkBox getInkBox() const { return getInkBox(0, getWidth()); }
    int countInk(int left, int right) const;
    int countInk() const { return countInk(0, getWidth()); }

private:
    CairoAdapter::SurfacePtr _surface;
};

/// The largest difference of a channel of a pixel; 256 for pictures that differ in size.
int compare(const Picture& a, const Picture& b);

} // namespace Vell::Examples::Testing
