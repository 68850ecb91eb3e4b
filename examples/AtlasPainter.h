#pragma once

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <vector>

/// A glyph's place in the texture.
struct Place {
    int x;
    int y;
    int width;
    int height;
    bool isColored; ///< finished colours, not coverage that takes the colour of the text
};

struct Quad {
    Place place;
    cinder::Vec2<float> position; ///< of the top left corner, under the transform
    cinder::MatrixAffine2<float> transform;
};

/// Packs each bitmap that it has not seen yet into one texture, and records a quad for each glyph.
///
/// It knows a bitmap by its address, which stays the bitmap's own while the factory caches it: always, if no
/// limits are set. Under limits, take BitmapGlyph::getInfo from the runs that createGlyphRun makes.
class AtlasPainter : public Vell::FontEngine::BitmapGlyphPainter {
public:
    static constexpr int side = 256; ///< of the texture, in pixels

    explicit AtlasPainter(const Vell::Gfx::Painter& painter)
        : _painter(painter) {}

    void drawGlyph(const Vell::FontEngine::BitmapGlyphImage& image,
                   const cinder::Vec2<float>& position) override {
        const auto found = places.find(image.buffer);
        const Place place = found != places.end() ? found->second : places[image.buffer] = pack(image);
        quads.push_back({place, position, _painter.getTransform()});
    }

    Vell::CairoAdapter::SurfacePtr texture = Vell::CairoAdapter::makeImageSurface(side, side);
    std::map<const unsigned char*, Place> places;
    std::vector<Quad> quads;

private:
    /// Puts the glyph behind the last one, or onto a new shelf; a pixel apart, so that a GPU may interpolate.
    Place pack(const Vell::FontEngine::BitmapGlyphImage& image) {
        const bool isColored = image.pixelMode == FT_PIXEL_MODE_LCD;
        Place place{_x, _y, static_cast<int>(image.width), static_cast<int>(image.rows), isColored};
        if (_x + place.width >= side) {
            place.x = 1;
            place.y += _shelfHeight + 1;
            _shelfHeight = 0;
        }
        if (place.x + place.width >= side || place.y + place.height >= side) {
            throw std::runtime_error("the texture is full");
        }
        copy(image, place);
        _x = place.x + place.width + 1;
        _y = place.y;
        _shelfHeight = std::max(_shelfHeight, place.height);
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
        cairo_surface_mark_dirty(texture.get());
    }

    const Vell::Gfx::Painter& _painter;
    int _x = 1;
    int _y = 1;
    int _shelfHeight = 0;
};
