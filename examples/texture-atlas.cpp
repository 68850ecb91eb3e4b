// Glyphs for a GPU: a glyph painter (AtlasPainter.h) packs each new bitmap into one texture and records a
// quad for each glyph. The program writes the texture, white on nothing (look at it on a dark ground), and
// the text as drawn from the texture and the quads alone. There are almost as many bitmaps as glyphs, because
// a glyph has a bitmap for each fraction of a pixel that it starts at. From a device pixel ratio of 1.5 on it
// has a single one.
//
//     texture-atlas [TEXT [TEXTURE.png [PICTURE.png]]]

#include "AtlasPainter.h"

#include <exception>
#include <iostream>
#include <string>

using namespace Vell;

namespace {

constexpr cinder::ColorAT<unsigned char> ink(150, 30, 30, 255);

void recordText(const std::string& text, const FontEngine::FontFactory& factory, Gfx::Painter& painter,
                AtlasPainter& atlas) {
    for (const float size : {16.0F, 24.0F, 32.0F}) {
        painter.translate({0.0F, 1.5F * size});
        FontEngine::drawRasterText(factory, text, FontEngine::describeFont("DejaVu Sans", size),
                                   {painter, atlas, ink});
    }
}

/// What a GPU does with a quad: samples the texture, and multiplies coverage by the colour of the text.
void drawQuad(cairo_t* context, cairo_surface_t* texture, const Quad& quad) {
    const float* const m = quad.transform.m;
    const cairo_matrix_t matrix{m[0], m[1], m[2], m[3], m[4], m[5]};
    const Place& place = quad.place;
    cairo_save(context);
    cairo_set_matrix(context, &matrix);
    cairo_translate(context, quad.position.x, quad.position.y);
    cairo_rectangle(context, 0.0, 0.0, place.width, place.height);
    cairo_clip(context);
    if (place.isColored) {
        cairo_set_source_surface(context, texture, -place.x, -place.y);
        cairo_paint(context);
    } else {
        cairo_set_source_rgb(context, ink.r / 255.0, ink.g / 255.0, ink.b / 255.0);
        cairo_mask_surface(context, texture, -place.x, -place.y);
    }
    cairo_restore(context);
}

void writePictures(const std::string& text, const char* textureFile, const char* pictureFile) {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const auto picture = CairoAdapter::makeImageSurface(640, 140);
    CairoAdapter::CairoPainter painter(picture.get());
    AtlasPainter atlas(painter);
    painter.translate({10.0F, 4.0F});
    recordText(text, *factory, painter, atlas);
    cairo_surface_mark_dirty(atlas.texture.get()); // a GPU would get the texture here
    for (const Quad& quad : atlas.quads) {
        drawQuad(painter.getContext(), atlas.texture.get(), quad);
    }
    std::cout << atlas.quads.size() << " quads of " << atlas.places.size() << " bitmaps\n";
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png(atlas.texture.get(), textureFile));
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png(picture.get(), pictureFile));
}

} // namespace

int main(int argc, char** argv) {
    try {
        writePictures(argc > 1 ? argv[1] : "Packed once, drawn often", argc > 2 ? argv[2] : "texture.png",
                      argc > 3 ? argv[3] : "texture-atlas.png");
    } catch (const std::exception& error) {
        std::cerr << "texture-atlas: " << error.what() << '\n';
        return 1;
    }
}
