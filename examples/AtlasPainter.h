#pragma once

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <vector>

struct Place { ///< of a glyph in the texture
    int x, y, width, height;
    bool isColored; ///< finished colours, not coverage that takes the colour of the text
};

struct Quad {
    Place place;
    cinder::Vec2<float> position; ///< of the top left corner, under the transform
    cinder::MatrixAffine2<float> transform;
};

/// Packs each bitmap that it has not seen yet into one texture, and records a quad for each glyph. A glyph
/// has a bitmap for each fraction of a pixel that it may start at.
///
/// The address of a bitmap tells it apart as long as the factory caches it: always, while no limits are set.
/// Under limits use the keys (BitmapGlyph::getInfo) of the runs that createGlyphRun makes.
class AtlasPainter : public Vell::FontEngine::BitmapGlyphPainter {
public:
    static constexpr int side = 256; ///< of the texture, in pixels

    explicit AtlasPainter(const Vell::Gfx::Painter& painter)
        : _painter(painter) {}

    void drawGlyph(const Vell::FontEngine::BitmapGlyphImage& image,
                   const cinder::Vec2<float>& position) override {
        if (image.buffer != nullptr) { // a space has no pixels
            const auto found = places.find(image.buffer);
            const Place place = found != places.end() ? found->second : places[image.buffer] = pack(image);
            quads.push_back({place, position, _painter.getTransform()});
        }
    }

    Vell::CairoAdapter::SurfacePtr texture = Vell::CairoAdapter::makeImageSurface(side, side);
    std::map<const unsigned char*, Place> places;
    std::vector<Quad> quads;

private:
    /// Puts the glyph behind the last one, or onto a new shelf; a pixel apart, so that a GPU may interpolate.
    Place pack(const Vell::FontEngine::BitmapGlyphImage& image) {
        Place place{_x, _y, int(image.width), int(image.rows), image.pixelMode == FT_PIXEL_MODE_LCD};
        if (_x + place.width >= side) {
            place.x = 1;
            place.y = _nextShelf;
        }
        if (place.x + place.width >= side || place.y + place.height >= side) {
            throw std::runtime_error("the texture is full");
        }
        if (!place.isColored && image.pixelMode != FT_PIXEL_MODE_GRAY) {
            throw std::runtime_error("a bitmap font: its pixels are no bytes");
        }
        copy(image, place);
        _x = place.x + place.width + 1;
        _y = place.y;
        _nextShelf = std::max(_nextShelf, place.y + place.height + 1);
        return place;
    }

    void copy(const Vell::FontEngine::BitmapGlyphImage& image, const Place& place) {
        unsigned char* const pixels = cairo_image_surface_get_data(texture.get());
        for (int y = 0; y < place.height; ++y) {
            for (int byte = 0; byte < place.width * 4; ++byte) { // coverage becomes white
                pixels[((place.y + y) * side + place.x) * 4 + byte] =
                    image.buffer[y * image.pitch + (place.isColored ? byte : byte / 4)];
            }
        }
    }

    const Vell::Gfx::Painter& _painter;
    int _x = 1, _y = 1, _nextShelf = 1;
};
