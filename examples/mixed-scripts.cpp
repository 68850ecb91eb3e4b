// A justified paragraph in many scripts, styles and colours. It is shaped once, and drawn as bitmaps in a
// picture and as outlines in a document.
//
//     mixed-scripts [WIDTH [FILE.png [FILE.pdf]]]

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <cairo-pdf.h>

#include <cmath>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

using namespace Vell;
using FontEngine::describeFont;
using FontEngine::FontStyle;
using TextLayout::TextColor;
using TextLayout::TextStyle;

namespace {

constexpr float margin = 20.0F;
constexpr float pixelRatio = 2.0F; // of the picture
const TextColor ink(30, 30, 30, 255);

/// A text that is put together of parts with styles of their own.
struct StyledText {
    StyledText& add(std::string_view part, const TextStyle& style) {
        spans.push_back({text.size(), text.size() + part.size(), style});
        text += part;
        return *this;
    }

    std::string text = {};
    std::vector<TextLayout::TextSpan> spans = {};
};

/// The languages let fonts and fallback choose the right shapes, such as the Japanese ones of Han characters.
StyledText writeText() {
    const TextStyle body(describeFont("DejaVu Serif", 18.0F));
    const TextStyle title(describeFont("DejaVu Serif", 18.0F, FontStyle{}.setBold()));
    const TextStyle italic(describeFont("DejaVu Serif", 18.0F, FontStyle{}.setItalic()));
    const auto speak = [&](const char* language) { return TextStyle(body).setLanguage(language); };
    StyledText text;
    text.add("Many scripts, one paragraph. ", TextStyle(title).setColor({20, 60, 160, 255}))
        .add("A sentence that begins in Latin may quote Arabic, ", body)
        .add("يولد جميع الناس أحرارًا", speak("ar").setColor({10, 110, 60, 255}))
        .add(", and Hebrew with a price in it, ", body)
        .add("הספר עולה 120 שקלים", speak("he").setColor({170, 40, 30, 255}))
        .add(", ", body)
        .add("before it goes on", TextStyle(italic).setUnderlined())
        .add(" in Devanagari: ", body)
        .add("सभी मनुष्य जन्म से स्वतन्त्र हैं", speak("hi").setColor({150, 80, 0, 255}))
        .add(". Japanese has no spaces: ", body)
        .add("すべての人間は、生まれながらにして自由である。", speak("ja"))
        .add(" Korean has them: ", body)
        .add("모든 인간은 태어날 때부터 자유롭다.", speak("ko").setColor({110, 30, 130, 255}))
        .add(" Thai has them only between sentences: ", body)
        .add("มนุษย์ทั้งหลายเกิดมามีอิสระ", speak("th"))
        .add(". Kerning and ligatures, as in \u201CAVATAR\u201D and \u201Coffice\u201D, come from the font, "
             "and ",
             body)
        .add("mistakes", TextStyle(body).setStruckOut())
        .add(" may be struck out.", body);
    return text;
}

void drawPicture(const TextLayout::Paragraph& paragraph, float width, const char* file) {
    const float height = paragraph.getHeight() + 2.0F * margin;
    const auto surface =
        CairoAdapter::makeImageSurface(static_cast<int>(std::ceil(pixelRatio * (width + 2.0F * margin))),
                                       static_cast<int>(std::ceil(pixelRatio * height)));
    CairoAdapter::CairoPainter painter(surface.get(), {pixelRatio, 0.0F, 0.0F, pixelRatio, 0.0F, 0.0F});
    cairo_set_source_rgb(painter.getContext(), 1.0, 1.0, 1.0);
    cairo_paint(painter.getContext());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink, pixelRatio);
    painter.setColor(ink);
    painter.translate({margin, margin});
    TextLayout::drawRaster(paragraph, {painter, glyphPainter, ink, pixelRatio}, [&](const TextColor& color) {
        painter.setColor(color); // of lines below and through the text
        glyphPainter.setColor(color);
    });
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png(surface.get(), file));
}

void drawDocument(const TextLayout::Paragraph& paragraph, float width, const char* file) {
    const auto surface = CairoAdapter::adoptSurface(
        cairo_pdf_surface_create(file, width + 2.0F * margin, paragraph.getHeight() + 2.0F * margin));
    CairoAdapter::CairoPainter painter(surface.get());
    painter.setColor(ink);
    painter.translate({margin, margin});
    TextLayout::drawVector(paragraph, painter, ink, [&](const TextColor& color) { painter.setColor(color); });
    CairoAdapter::finishSurface(surface.get()); // writes the document, and throws where that fails
}

void drawParagraph(float width, const char* picture, const char* document) {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const TextLayout::TextShaper shaper(factory);
    const StyledText text = writeText();
    const TextLayout::Paragraph paragraph(shaper.shape(text.text, text.spans),
                                          TextLayout::ParagraphStyle()
                                              .setWidth(width)
                                              .setAlignment(TextLayout::TextAlignment::Justify)
                                              .setLineHeight(1.1F));
    drawPicture(paragraph, width, picture);
    drawDocument(paragraph, width, document);
}

} // namespace

int main(int argc, char** argv) {
    try {
        drawParagraph(argc > 1 ? std::stof(argv[1]) : 460.0F, argc > 2 ? argv[2] : "mixed-scripts.png",
                      argc > 3 ? argv[3] : "mixed-scripts.pdf");
        return 0;
    } catch (const std::invalid_argument&) {
        std::cerr << "mixed-scripts: the width must be a number\n";
    } catch (const std::exception& error) {
        std::cerr << "mixed-scripts: " << error.what() << '\n';
    }
    return 1;
}
