#pragma once

#include "Canvas.h"

#include <FontEngine/FontEngine.h>
#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/FontBuilder.h>

#include <functional>

namespace Vell::CairoAdapter::Testing {

using FontEngine::ColorPaintTarget;
using FontEngine::PaintBox;
using FontEngine::PaintColor;

constexpr PaintColor red{255, 0, 0, 255};
constexpr PaintColor blue{0, 0, 255, 255};
constexpr std::uint32_t redPixel = 0xFFFF0000;
constexpr std::uint32_t bluePixel = 0xFF0000FF;

using Paint = std::function<void(ColorPaintTarget& target)>;

/// A font of 1000 units per em.
class ClipFont {
public:
    static constexpr unsigned short box = 1; ///< from (10, 10) to (30, 40)
    static constexpr unsigned short space = 2;
    static constexpr unsigned short triangle = 3; ///< (0, 0), (0, 40), (40, 0)

    explicit ClipFont(bool isBold = false)
        : _faceInfo(Vell::Testing::makeFaceInfo("Test Sans", isBold))
        , _factory(makeFactory())
        , _face(_factory->shareFace(_faceInfo)) {}

    /// Draws a glyph under the painter's transform to font units.
    bool draw(CairoPainter& painter, const Paint& paint) const {
        const FontEngine::ColorGlyphInfo info(_faceInfo, 0, 16.0F, 1.0F, 1.0F, nullptr, black);
        return painter.drawColorGlyph(info, _face, [&paint](ColorPaintTarget& target) {
            paint(target);
            return true;
        });
    }

    static NNPtr<FontEngine::FontFactory> makeFactory() {
        Vell::Testing::FontBuilder font;
        font.addGlyph(Vell::Testing::makeBoxGlyph(50, 10, 10, 30, 40));
        font.addGlyph({});
        font.addGlyph({50, {{{0, 0}, {0, 40}, {40, 0}}}, {}});
        font.map('A', box);
        const auto loader = std::make_shared<Vell::Testing::CountingLoader>();
        loader->setFont("Test Sans", false, false, font.build());
        return FontEngine::FontFactory::create(loader, "Test Sans");
    }

private:
    Vell::Testing::FaceInfoPtr _faceInfo;
    NNPtr<FontEngine::FontFactory> _factory;
    NNPtr<const FontEngine::FontFace> _face;
};

/// A canvas of one pixel per font unit. The origin of the glyph is the lower left corner.
struct ColorCanvas : Canvas {
    static constexpr int side = 50;

    explicit ColorCanvas(const Paint& paint)
        : Canvas(side, side) {
        CairoPainter painter(surface.get());
        painter.translate({0, side});
        ClipFont().draw(painter, paint);
    }
    ColorCanvas()
        : Canvas(side, side) {}

    /// The pixel whose lower left corner is at (x, y), y pointing up.
    std::uint32_t getPixelAt(int x, int y) const { return getPixel(x, side - 1 - y); }

    /// Whether the pixels of the box, y pointing up, have the colour, and all others none.
    bool isBoxOf(std::uint32_t expected, int left, int bottom, int right, int top) const {
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                const bool isInside = x >= left && x < right && y >= bottom && y < top;
                if (getPixelAt(x, y) != (isInside ? expected : 0U)) {
                    return false;
                }
            }
        }
        return true;
    }
};

} // namespace Vell::CairoAdapter::Testing
