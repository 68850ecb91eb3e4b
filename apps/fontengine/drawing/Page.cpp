#include "drawing/Page.h"

#include "Errors.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <exception>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;
using CairoAdapter::SurfacePtr;
using CairoAdapter::throwIfFailed;

/// Cairo's way to write a file: appends the data to the std::string behind `bytes`, which must outlive the
/// surface. If memory runs out, the status of the surface becomes an error.
cairo_status_t appendBytes(void* bytes, const unsigned char* data, unsigned int length) {
    try {
        static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::exception&) {
        return CAIRO_STATUS_NO_MEMORY; // no exception may pass through cairo's frames
    }
}

void fillWith(const CairoPainter& painter, const Color& color) {
    constexpr double greatest = 255.0;
    cairo_set_source_rgba(painter.getContext(), color.r / greatest, color.g / greatest, color.b / greatest,
                          color.a / greatest);
    cairo_paint(painter.getContext());
}

/// Leaves a transparent background unpainted, which keeps documents small.
void drawOn(cairo_surface_t* surface, float ratio, const Color& background, const PageDrawing& draw) {
    CairoPainter painter(surface, {ratio, 0.0F, 0.0F, ratio, 0.0F, 0.0F});
    if (background.a != 0) {
        fillWith(painter, background);
    }
    draw(painter);
    throwIfFailed(cairo_status(painter.getContext()));
}

std::string makePng(const PageSize& size, const Color& background, const PageDrawing& draw) {
    const SurfacePtr surface = CairoAdapter::makeImageSurface(getPixelCount(size.width, size.pixelRatio),
                                                              getPixelCount(size.height, size.pixelRatio));
    drawOn(surface.get(), size.pixelRatio, background, draw);
    return encodePng(surface.get());
}

SurfacePtr makeDocument(PageFormat format, const PageSize& size, std::string& bytes) {
    const auto width = static_cast<double>(size.width);
    const auto height = static_cast<double>(size.height);
    if (format == PageFormat::Pdf) {
        return CairoAdapter::adoptSurface(
            cairo_pdf_surface_create_for_stream(appendBytes, &bytes, width, height));
    }
    SurfacePtr surface =
        CairoAdapter::adoptSurface(cairo_svg_surface_create_for_stream(appendBytes, &bytes, width, height));
    // In this unit, viewers show an SVG at the size of a PNG of ratio 1.
    cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
    return surface;
}

} // namespace

std::string makePage(std::string_view path, const PageSize& size, const Color& background,
                     const PageDrawing& draw) {
    const PageFormat format = getPageFormat(path);
    checkPageSize(path, size);
    if (format == PageFormat::Png) {
        return makePng(size, background, draw);
    }
    std::string bytes; // outlives the surface, which writes to it to the last
    const SurfacePtr surface = makeDocument(format, size, bytes);
    constexpr float ratio = 1.0F;
    drawOn(surface.get(), ratio, background, draw);
    CairoAdapter::finishSurface(surface.get());
    return bytes;
}

std::string encodePng(cairo_surface_t* surface) {
    std::string bytes;
    throwIfFailed(cairo_surface_write_to_png_stream(surface, appendBytes, &bytes));
    return bytes;
}

} // namespace Vell::Tool
