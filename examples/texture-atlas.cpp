// Glyphs for a GPU: a glyph painter (AtlasPainter.h) packs each new bitmap into one texture and records a
// quad for each glyph. The program writes the texture, white on nothing (look at it on a dark ground), and
// the text as drawn from the texture and the quads alone. There are almost as many bitmaps as glyphs, because
// a glyph has a bitmap for each fraction of a pixel that it starts at. From a device pixel ratio of 1.5 on it
// has a single one.
//
// Colour glyphs, of the family Noto Color Emoji if it is installed, go to a texture of their own.
//
//     texture-atlas [TEXT [TEXTURE.png [PICTURE.png [EMOJI [COLOURS.png]]]]]

#include "AtlasPainter.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

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

/// One glyph for each character. Sequences of several characters need shaped text.
std::vector<FontEngine::PlacedGlyph> placeEmoji(const std::string& emoji, const FontEngine::FontFace& face,
                                                float size) {
    std::vector<FontEngine::PlacedGlyph> glyphs;
    const char* position = emoji.data();
    const char* const end = position + emoji.size();
    for (float x = 0.0F; position != end; x += 1.25F * size) {
        const unsigned int code = decodeUtf8(position, end);
        const auto glyph = face.getBasicMetrics().getCharMap()[code];
        glyphs.push_back({glyph.glyphIndex, true, code, {x, 0.0F}});
    }
    return glyphs;
}

void recordEmoji(const std::string& emoji, const FontEngine::FontFactory& factory, Gfx::Painter& painter,
                 AtlasPainter& atlas) {
    constexpr float size = 32.0F;
    constexpr float pixelRatio = 1.0F;
    const auto faceInfo =
        FontEngine::describeFont("Noto Color Emoji", size)->getFontInfo()->getFontFaceInfo();
    const auto face = factory.shareFace(faceInfo);
    std::vector<FontEngine::PlacedGlyph> glyphs = placeEmoji(emoji, *face, size);
    painter.translate({0.0F, 1.5F * size});
    const FontEngine::RasterSpace space = FontEngine::getRasterSpace(painter);
    painter.pushTransform();
    FontEngine::enterRasterSpace(painter, space);
    FontEngine::drawColorGlyphs(factory.getColorGlyphs(),
                                {faceInfo, face, size, space.scale.x, pixelRatio, ink}, atlas, glyphs.data(),
                                glyphs.size());
    painter.popTransform();
}

/// What a GPU does with a quad: samples the texture, and multiplies coverage by the colour of the text.
void drawQuad(cairo_t* context, const Quad& quad) {
    const float* const m = quad.transform.m;
    const cairo_matrix_t matrix{m[0], m[1], m[2], m[3], m[4], m[5]};
    const Place& place = quad.place;
    cairo_surface_t* const texture = quad.page->texture.get();
    cairo_save(context);
    cairo_set_matrix(context, &matrix);
    cairo_translate(context, quad.position.x, quad.position.y);
    cairo_rectangle(context, 0.0, 0.0, place.width, place.height);
    cairo_clip(context);
    if (quad.isColored) {
        cairo_set_source_surface(context, texture, -place.x, -place.y);
        cairo_paint(context);
    } else {
        cairo_set_source_rgb(context, ink.r / 255.0, ink.g / 255.0, ink.b / 255.0);
        cairo_mask_surface(context, texture, -place.x, -place.y);
    }
    cairo_restore(context);
}

void write(cairo_surface_t* surface, const std::string& file) {
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png(surface, file.c_str()));
}

struct Arguments {
    std::string text = "Packed once, drawn often";
    std::string texture = "texture.png";
    std::string picture = "texture-atlas.png";
    std::string emoji = "\U0001F600\U0001F680\U0001F33B\U0001F600";
    std::string colors = "texture-colors.png";
};

void writePictures(const Arguments& arguments) {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const auto picture = CairoAdapter::makeImageSurface(640, 180);
    CairoAdapter::CairoPainter painter(picture.get());
    AtlasPainter atlas(painter);
    painter.translate({10.0F, 4.0F});
    recordText(arguments.text, *factory, painter, atlas);
    recordEmoji(arguments.emoji, *factory, painter, atlas);
    for (const AtlasPage* page : {&atlas.bitmapPage, &atlas.colorPage}) {
        cairo_surface_mark_dirty(page->texture.get()); // a GPU would get the texture here
    }
    for (const Quad& quad : atlas.quads) {
        drawQuad(painter.getContext(), quad);
    }
    std::cout << atlas.quads.size() << " quads of " << atlas.places.size() << " bitmaps and "
              << atlas.colorPlaces.size() << " colour images\n";
    write(atlas.bitmapPage.texture.get(), arguments.texture);
    write(atlas.colorPage.texture.get(), arguments.colors);
    write(picture.get(), arguments.picture);
}

} // namespace

int main(int argc, char** argv) {
    try {
        Arguments arguments;
        std::string* const places[] = {&arguments.text, &arguments.texture, &arguments.picture,
                                       &arguments.emoji, &arguments.colors};
        for (int i = 1; i < argc && i <= 5; ++i) {
            *places[i - 1] = argv[i];
        }
        writePictures(arguments);
    } catch (const std::exception& error) {
        std::cerr << "texture-atlas: " << error.what() << '\n';
        return 1;
    }
}
