#include "Errors.h"
#include "drawing/TextDrawing.h"
#include "fonts/FaceFacts.h"
#include "fonts/FontShaper.h"

#include <fmt/format.h>

#include <cmath>
#include <string_view>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoPainter;
using TextLayout::ShapedText;

/// A line end at the end of a text begins no further line.
std::string_view trimLineEnd(std::string_view text) {
    for (const std::string_view end : {"\r\n", "\n", "\r"}) {
        if (text.size() >= end.size() && text.substr(text.size() - end.size()) == end) {
            return text.substr(0, text.size() - end.size());
        }
    }
    return text;
}

TextLayout::TextAlignment parseAlignment(const std::string& word) {
    if (word == "end" || word == "center") {
        return word == "end" ? TextLayout::TextAlignment::End : TextLayout::TextAlignment::Center;
    }
    return word == "justify" ? TextLayout::TextAlignment::Justify : TextLayout::TextAlignment::Start;
}

TextLayout::ParagraphStyle makeStyle(const LayoutRequest& request) {
    return TextLayout::ParagraphStyle()
        .setWidth(request.width.value_or(TextLayout::ParagraphStyle::unlimitedWidth))
        .setAlignment(parseAlignment(request.alignment));
}

bool hasColors(const FontEngine::Font& font) {
    return font.getFontFactory().getColorGlyphs().hasColors(*font.getFace());
}

class ShapedDrawing : public TextDrawing {
public:
    ShapedDrawing(const RenderOptions& options, const std::string& text)
        : _shaper(options.font, options.layout->shaping)
        , _paragraph(_shaper.shape(trimLineEnd(text), options.color), makeStyle(*options.layout))
        , _width(options.layout->width.value_or(_paragraph.getWidth())) {
        if (!std::isfinite(_width) || !std::isfinite(_paragraph.getHeight())) {
            throw ToolError(
                fmt::format("the font '{}' has no usable metrics", getAskedName(_shaper.getFont())));
        }
    }

    Box getBox(const Placement& placement) const override {
        return getPlacedBox(Box{0.0F, 0.0F, _width, _paragraph.getHeight()}, placement);
    }

    void draw(CairoPainter& painter, const TextPaint& paint, const Placement& placement,
              const cinder::Vec2<float>& origin) const override {
        try {
            painter.pushTransform();
            enterPlacement(painter, getStart({0.0F, 0.0F}, paint, placement, origin), placement);
            if (paint.kind == PainterKind::Raster) {
                drawRaster(painter, paint);
            } else {
                drawVector(painter, paint);
            }
            painter.popTransform();
        } catch (const FontLoaders::FreeTypeException& error) {
            throw ToolError(fmt::format("the text cannot be drawn with the font '{}': {}",
                                        getAskedName(_shaper.getFont()), error.what()));
        }
    }

private:
    void drawRaster(CairoPainter& painter, const TextPaint& paint) const {
        paintBitmaps(painter, paint, [&](FontEngine::BitmapGlyphPainter& glyphPainter, const Color& color) {
            TextLayout::drawRaster(_paragraph, {painter, glyphPainter, color, paint.pixelRatio});
        });
    }

    void drawVector(CairoPainter& painter, const TextPaint& paint) const {
        for (const TextLayout::RunFont& font : _paragraph.getText()->getFonts()) {
            if (!hasColors(font.font)) {
                checkOutlines(font.font, getFamilyName(*font.font.getFace()));
            }
        }
        painter.setColor(paint.color);
        TextLayout::drawVector(_paragraph, painter, paint.color);
    }

    FontShaper _shaper;
    TextLayout::Paragraph _paragraph;
    float _width;
};

} // namespace

std::unique_ptr<TextDrawing> makeShapedDrawing(const RenderOptions& options, const std::string& text) {
    return std::make_unique<ShapedDrawing>(options, text);
}

} // namespace Vell::Tool
