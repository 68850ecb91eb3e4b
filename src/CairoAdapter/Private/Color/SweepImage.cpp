#include <CairoAdapter/Private/Color/SweepImage.h>

#include <CairoAdapter/Private/Blending/Pixels.h>
#include <CairoAdapter/Private/Color/Sectors.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::CairoAdapter::Internal {

namespace {

std::uint32_t premultiply(const StraightColor& color) {
    const auto toByte = [](double value) { return static_cast<std::uint32_t>(std::lround(value * 255.0)); };
    return toByte(color.alpha) << 24 | toByte(color.red * color.alpha) << 16 |
           toByte(color.green * color.alpha) << 8 | toByte(color.blue * color.alpha);
}

/// The angle is one of std::atan2.
StraightColor getColor(const std::vector<Sector>& sectors, double angle) {
    const double positive = angle < 0.0 ? angle + wholeTurn : angle;
    const auto found = std::upper_bound(sectors.begin(), sectors.end() - 1, positive,
                                        [](double value, const Sector& sector) { return value < sector.to; });
    const double share = (positive - found->from) / (found->to - found->from);
    const double known = share > 0.0 ? std::min(share, 1.0) : 0.0; // also if it is no number
    return mix(found->fromColor, found->toColor, known);
}

} // namespace

SurfacePtr makeSweepImage(const FontEngine::SweepGradient& gradient, const cairo_matrix_t& toGradient,
                          int width, int rows) {
    const std::vector<Sector> sectors = listSectors(gradient);
    SurfacePtr image = makeImageSurface(width, rows);
    unsigned char* const pixels = cairo_image_surface_get_data(image.get());
    const std::ptrdiff_t stride = cairo_image_surface_get_stride(image.get());
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < width; ++column) {
            double x = column + 0.5;
            double y = row + 0.5;
            cairo_matrix_transform_point(&toGradient, &x, &y);
            const double angle = std::atan2(y - static_cast<double>(gradient.center.y),
                                            x - static_cast<double>(gradient.center.x));
            writeColor(premultiply(getColor(sectors, angle)),
                       pixels + row * stride + std::ptrdiff_t{column} * bytesPerColor);
        }
    }
    cairo_surface_mark_dirty(image.get());
    return image;
}

} // namespace Vell::CairoAdapter::Internal
