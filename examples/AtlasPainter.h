#pragma once

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <algorithm>
#include <map>
#include <memory>
#include <stdexcept>
#include <vector>

struct Place { ///< of a glyph in a texture
    int x, y, width, height;
};

/// A texture of words A << 24 | R << 16 | G << 8 | B, premultiplied, with the glyphs on shelves.
class AtlasPage {
public:
    static constexpr int side = 256; ///< in pixels

    /// Finds room behind the last glyph, or on a new shelf; a pixel apart, so that a GPU may interpolate.
    Place pack(const Vell::FontEngine::BitmapGlyphImage& image) {
        Place place{_x, _y, int(image.width), int(image.rows)};
        if (_x + place.width >= side) {
            place.x = 1;
            place.y = _nextShelf;
        }
        if (place.x + place.width >= side || place.y + place.height >= side) {
            throw std::runtime_error("the texture is full");
        }
        _x = place.x + place.width + 1;
        _y = place.y;
        _nextShelf = std::max(_nextShelf, place.y + place.height + 1);
        return place;
    }

    /// Copies the pixels of the image, which have so many bytes. Coverage becomes white.
    void copy(const Vell::FontEngine::BitmapGlyphImage& image, int bytesPerPixel, const Place& place) const {
        unsigned char* const pixels = cairo_image_surface_get_data(texture.get());
        for (int y = 0; y < place.height; ++y) {
            for (int byte = 0; byte < place.width * 4; ++byte) {
                pixels[((place.y + y) * side + place.x) * 4 + byte] =
                    image.buffer[y * image.pitch + byte * bytesPerPixel / 4];
            }
        }
    }

    Vell::CairoAdapter::SurfacePtr texture = Vell::CairoAdapter::makeImageSurface(side, side);

private:
    int _x = 1, _y = 1, _nextShelf = 1;
};

struct Quad {
    const AtlasPage* page;
    Place place;
    bool isColored;               ///< finished colours, not coverage that takes the colour of the text
    cinder::Vec2<float> position; ///< of the top left corner, under the transform
    cinder::MatrixAffine2<float> transform;
};

/// Packs each image that it has not seen yet into a texture, and records a quad for each glyph. A glyph has a
/// bitmap for each fraction of a pixel that it may start at. Colour glyphs have a page of their own, because
/// a renderer may keep the other one in a format of one byte per pixel.
///
/// The address of a bitmap tells it apart as long as the factory caches it: always, while no limits are set.
/// Under limits use the keys (BitmapGlyph::getInfo) of the runs that createGlyphRun makes. The images of
/// colour glyphs are shared, so that their addresses are never used again while the atlas has them.
class AtlasPainter : public Vell::FontEngine::BitmapGlyphPainter, public Vell::FontEngine::ColorGlyphPainter {
public:
    explicit AtlasPainter(const Vell::Gfx::Painter& painter)
        : _painter(painter) {}
    AtlasPainter(const AtlasPainter&) = delete; // its quads point to its pages
    AtlasPainter& operator=(const AtlasPainter&) = delete;

    void drawGlyph(const Vell::FontEngine::BitmapGlyphImage& image,
                   const cinder::Vec2<float>& position) override {
        if (image.buffer == nullptr) { // a space has no pixels
            return;
        }
        const bool isColored = image.pixelMode == FT_PIXEL_MODE_LCD;
        if (!isColored && image.pixelMode != FT_PIXEL_MODE_GRAY) {
            throw std::runtime_error("a bitmap font: its pixels are no bytes");
        }
        const auto [entry, isNew] = places.try_emplace(image.buffer);
        if (isNew) {
            entry->second = bitmapPage.pack(image);
            bitmapPage.copy(image, isColored ? 4 : 1, entry->second);
        }
        quads.push_back({&bitmapPage, entry->second, isColored, position, _painter.getTransform()});
    }

    /// The bytes of these images are in the order of the texture on machines that store the lowest byte
    /// first.
    void drawColorGlyph(const std::shared_ptr<const Vell::FontEngine::ColorGlyphImage>& image,
                        const cinder::Vec2<float>& position) override {
        const auto [entry, isNew] = colorPlaces.try_emplace(image);
        if (isNew) {
            entry->second = colorPage.pack(*image);
            colorPage.copy(*image, 4, entry->second);
        }
        quads.push_back({&colorPage, entry->second, true, position, _painter.getTransform()});
    }

    AtlasPage bitmapPage;
    AtlasPage colorPage;
    std::map<const unsigned char*, Place> places;
    std::map<std::shared_ptr<const Vell::FontEngine::ColorGlyphImage>, Place> colorPlaces;
    std::vector<Quad> quads;

private:
    const Vell::Gfx::Painter& _painter;
};
