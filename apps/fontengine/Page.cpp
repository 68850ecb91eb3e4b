#include "Page.h"

#include "Errors.h"
#include "SurfaceBytes.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;
using CairoAdapter::SurfacePtr;
using CairoAdapter::throwIfFailed;

void fillWith(const CairoPainter& painter, const Color& color) {
    constexpr double full = 255.0;
    cairo_set_source_rgba(painter.getContext(), color.r / full, color.g / full, color.b / full,
                          color.a / full);
    cairo_paint(painter.getContext());
}

/// A picture keeps its background transparent unless it is painted; painting nothing keeps a document small.
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
    // Viewers show an SVG as large as the PNG of ratio 1.
    cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
    return surface;
}

} // namespace

std::string makePage(PageFormat format, const PageSize& size, const Color& background,
                     const PageDrawing& draw) {
    checkPageSize(format, size);
    if (format == PageFormat::Png) {
        return makePng(size, background, draw);
    }
    std::string bytes; // outlives the surface, which writes to it until its end
    const SurfacePtr surface = makeDocument(format, size, bytes);
    constexpr float ratio = 1.0F;
    drawOn(surface.get(), ratio, background, draw);
    CairoAdapter::finishSurface(surface.get());
    return bytes;
}

} // namespace Vell::Tool
