#include "drawing/GlyphDrawing.h"

#include "drawing/Color.h"

#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>

#include <cmath>

namespace Vell::Tool {

namespace {

FontEngine::BitmapGlyphImage makeView(const FT_Bitmap& bitmap) {
    FontEngine::BitmapGlyphImage view;
    view.rows = bitmap.rows;
    view.width = bitmap.width;
    view.pitch = bitmap.pitch;
    view.buffer = bitmap.buffer;
    view.pixelMode = bitmap.pixel_mode;
    return view;
}

} // namespace

GlyphDrawing::GlyphDrawing(CairoAdapter::CairoPainter& painter, const TextFont& font, const GlyphLook& look)
    : _font(font)
    , _look(look)
    , _painter(painter, black, look.pixelRatio) {}

FontEngine::BitmapGlyphInfo GlyphDrawing::describe(unsigned int codePoint) const {
    const FontEngine::FontFace& face = *_font.font->getFace();
    const auto glyph = face.getBasicMetrics().getCharMap()[codePoint];
    constexpr bool isLast = true;
    return FontEngine::BitmapGlyphInfo(_font.font->getFontInfo()->getFontFaceInfo(), _look.mode,
                                       glyph.glyphIndex, codePoint, _font.font->getFontSize(), {1.0F, 1.0F},
                                       _look.pixelRatio, _look.offset, isLast, face.getTransform());
}

bool GlyphDrawing::tryDraw(unsigned int codePoint, const cinder::Vec2<float>& origin) {
    try {
        drawBitmap(describe(codePoint), origin);
        return true;
    } catch (const FontLoaders::FreeTypeException&) {
        return false;
    }
}

bool GlyphDrawing::tryDrawInColor(unsigned int codePoint, const cinder::Vec2<float>& corner, float side) {
    const FontEngine::ColorGlyphInfo info(_font.font->getFontInfo()->getFontFaceInfo(),
                                          describe(codePoint).getGlyphIndex(), _font.font->getFontSize(),
                                          1.0F, _look.pixelRatio, _font.palette, black);
    const auto image = _font.font->getFontFactory().getColorGlyphs().getImage(info, _font.font->getFace());
    if (image == nullptr) {
        return false;
    }
    const auto place = [&](float edge, unsigned int length) {
        const float middle = (side * _look.pixelRatio - static_cast<float>(length)) / 2.0F;
        return edge + std::round(middle) / _look.pixelRatio;
    };
    _painter.drawColorGlyph(image, {place(corner.x, image->width), place(corner.y, image->rows)});
    return true;
}

void GlyphDrawing::drawBitmap(const FontEngine::BitmapGlyphInfo& info, const cinder::Vec2<float>& origin) {
    constexpr bool flipVertically = false;
    const auto& face = *_font.font->getFace();
    const auto bitmap = face.getBitmapGlyph(info, flipVertically);
    if (bitmap == nullptr || bitmap->bitmap.buffer == nullptr) {
        return; // the face lacks the size, or the glyph is a space
    }
    const cinder::Vec2<float> corner(origin.x + static_cast<float>(bitmap->left) / _look.pixelRatio,
                                     origin.y - static_cast<float>(bitmap->top) / _look.pixelRatio);
    if (bitmap->bitmap.pixel_mode == FT_PIXEL_MODE_LCD) {
        const FontEngine::BitmapGlyph glyph(bitmap, corner, info);
        _painter.drawGlyph(*face.getGlyphBitmapWithSubpixels(glyph, black), corner);
        return;
    }
    _painter.drawGlyph(makeView(bitmap->bitmap), corner);
}

} // namespace Vell::Tool
