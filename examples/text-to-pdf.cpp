// Vector text in a PDF document: sharp at any size, under any transform. Each glyph is an outline; the font
// itself is not embedded.
//
//     text-to-pdf [TEXT [FILE.pdf]]

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <cairo-pdf.h>

#include <exception>
#include <iostream>
#include <string>

using namespace Vell;

namespace {

constexpr float pageWidth = 595.0F; // A4 in points, the units of PDF
constexpr float pageHeight = 842.0F;

void writeDocument(const std::string& text, const std::string& file) {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const auto font = FontEngine::describeFont("DejaVu Serif", 60.0F, FontEngine::FontStyle{}.setBold());
    const FontEngine::TextSize size = FontEngine::measureText(*factory, text, font);

    const auto surface =
        CairoAdapter::adoptSurface(cairo_pdf_surface_create(file.c_str(), pageWidth, pageHeight));
    CairoAdapter::CairoPainter painter(surface.get());
    constexpr int spokes = 12;
    painter.translate({pageWidth / 2.0F, pageHeight / 2.0F});
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const float turn = static_cast<float>(spoke) / static_cast<float>(spokes);
        painter.setColor({static_cast<unsigned char>(255.0F * turn), 60, 160, 255});
        painter.pushTransform();
        painter.rotate(turn * 6.2831853F);
        painter.translate({60.0F, 0.0F});
        painter.scale({0.4F, 0.4F});                                    // the same outlines at every size
        painter.translate({0.0F, (size.ascent - size.descent) / 2.0F}); // the ray is its middle
        FontEngine::drawVectorText(*factory, text, font, painter);
        painter.popTransform();
    }
    CairoAdapter::finishSurface(surface.get()); // writes the document, and throws where that fails
}

} // namespace

int main(int argc, char** argv) {
    try {
        writeDocument(argc > 1 ? argv[1] : "Vector text", argc > 2 ? argv[2] : "text-to-pdf.pdf");
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "text-to-pdf: " << error.what() << '\n';
        return 1;
    }
}
