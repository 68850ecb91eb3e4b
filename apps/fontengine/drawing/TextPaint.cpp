#include "drawing/TextPaint.h"

#include "Errors.h"
#include "fonts/FontRuns.h"

#include <fmt/format.h>

#include FT_IMAGE_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

namespace Vell::Tool {

namespace {

using CairoAdapter::CairoGlyphPainter;
using CairoAdapter::CairoPainter;
using FontEngine::BitmapGlyphImage;

boost::string_ref toStringRef(std::string_view text) {
    return boost::string_ref(text.data(), text.size());
}

/// Turns images of underscores into coverage, for colours and backgrounds that the images do not suit. The
/// images are opaque, text on white, and light text would disappear in them; drawn in black, they show how
/// far each pixel is covered. Colour glyphs pass through.
class CoveragePainter : public FontEngine::BitmapGlyphPainter, public FontEngine::ColorGlyphPainter {
public:
    explicit CoveragePainter(CairoGlyphPainter& target)
        : _target(target) {}

    void drawColorGlyph(const std::shared_ptr<const FontEngine::ColorGlyphImage>& image,
                        const cinder::Vec2<float>& position) override {
        _target.drawColorGlyph(image, position);
    }

    void drawGlyph(const BitmapGlyphImage& image, const cinder::Vec2<float>& position) override {
        if (image.pixelMode != FT_PIXEL_MODE_LCD) {
            _target.drawGlyph(image, position);
            return;
        }
        std::vector<unsigned char> coverage = readCoverage(image);
        BitmapGlyphImage grey;
        grey.rows = image.rows;
        grey.width = image.width;
        grey.pitch = static_cast<int>(image.width);
        grey.buffer = coverage.data();
        grey.pixelMode = FT_PIXEL_MODE_GRAY;
        _target.drawGlyph(grey, position);
    }

private:
    static std::vector<unsigned char> readCoverage(const BitmapGlyphImage& image) {
        std::vector<unsigned char> coverage;
        for (std::ptrdiff_t row = 0; row < static_cast<std::ptrdiff_t>(image.rows); ++row) {
            const unsigned char* pixel = image.buffer + row * image.pitch;
            for (unsigned int x = 0; x < image.width; ++x, pixel += sizeof(std::uint32_t)) {
                std::uint32_t argb = 0;
                std::memcpy(&argb, pixel, sizeof(argb));
                const bool isLeftOut = argb == 0;
                const std::uint32_t green = argb >> 8 & 0xFFU;
                coverage.push_back(static_cast<unsigned char>(isLeftOut ? 0 : 255 - green));
            }
        }
        return coverage;
    }

    CairoGlyphPainter& _target;
};

bool suitsColoredImages(const TextPaint& paint) {
    return paint.background == white && paint.color.a == 255;
}

void paintRaster(CairoPainter& painter, const TextFont& font, std::string_view text, const TextPaint& paint) {
    paintBitmaps(painter, paint, [&](FontEngine::BitmapGlyphPainter& target, const Color& imageColor) {
        constexpr bool flipVertically = false;
        FontEngine::RasterTextPainter(painter, target, flipVertically)
            .drawText(toStringRef(text), font.setting, *font.font, imageColor, paint.pixelRatio);
    });
}

void paintRun(CairoPainter& painter, const FontRun& run) {
    checkOutlines(*run.font.font, getAskedName(run.font));
    painter.pushTransform();
    painter.translate({run.x, 0.0F});
    FontEngine::VectorTextPainter(painter).drawText(toStringRef(run.text), run.font.setting, *run.font.font);
    painter.popTransform();
}

void paintVector(CairoPainter& painter, const TextFont& font, std::string_view text, const TextPaint& paint) {
    painter.setColor(paint.color);
    for (const FontRun& run : splitIntoFontRuns(font, text)) {
        paintRun(painter, run);
    }
}

} // namespace

void paintBitmaps(CairoPainter& painter, const TextPaint& paint, const BitmapDrawing& draw) {
    CairoGlyphPainter glyphPainter(painter, paint.color, paint.pixelRatio);
    if (suitsColoredImages(paint)) {
        draw(glyphPainter, paint.color);
        return;
    }
    CoveragePainter coveragePainter(glyphPainter);
    draw(coveragePainter, black);
}

void checkOutlines(const FontEngine::Font& font, const std::string& name) {
    if (!FT_IS_SCALABLE(font.getFace()->getHandle().get())) {
        throw ToolError(fmt::format("the font '{}' has no outlines: use --painter raster", name));
    }
}

void paintText(CairoPainter& painter, const TextFont& font, std::string_view text, const TextPaint& paint) {
    try {
        if (paint.kind == PainterKind::Raster) {
            paintRaster(painter, font, text, paint);
        } else {
            paintVector(painter, font, text, paint);
        }
    } catch (const FontLoaders::FreeTypeException& error) {
        throw ToolError(
            fmt::format("the text cannot be drawn with the font '{}': {}", getAskedName(font), error.what()));
    }
}

} // namespace Vell::Tool
