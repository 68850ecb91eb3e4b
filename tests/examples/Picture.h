#pragma once

#include <CairoAdapter/CairoAdapter.h>

#include <cstdint>
#include <string>

namespace Vell::Examples::Testing {

/// The smallest box around pixels, right and bottom exclusive, or all 0 if there are none.
struct InkBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// A picture that was read from a file.
class Picture {
public:
    /// Throws CairoAdapterException if the file is not a PNG file.
    explicit Picture(const std::string& path);

    int getWidth() const { return cairo_image_surface_get_width(_surface.get()); }
    int getHeight() const { return cairo_image_surface_get_height(_surface.get()); }

    /// A << 24 | R << 16 | G << 8 | B, premultiplied; opaque if the file has no alpha.
    std::uint32_t getPixel(int x, int y) const;

    /// The box and the number of the pixels that differ from the top left pixel, in the columns from `left`
    /// to before `right`.
    InkBox getInkBox(int left, int right) const;
    InkBox getInkBox() const { return getInkBox(0, getWidth()); }
    int countInk(int left, int right) const;
    int countInk() const { return countInk(0, getWidth()); }

private:
    CairoAdapter::SurfacePtr _surface;
};

/// Returns the largest difference of a channel, or 256 if the pictures differ in size.
int compare(const Picture& a, const Picture& b);

} // namespace Vell::Examples::Testing
