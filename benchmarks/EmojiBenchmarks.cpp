// Warm glyphs of Noto Color Emoji on a page, beside cairo painting the same images. An item is a glyph.

#include "support/BenchEngine.h"
#include "support/Items.h"
#include "support/Scene.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Vell::Benchmarks {

namespace {

constexpr const char* fontFile = "/usr/share/fonts/truetype/noto/NotoColorEmoji.ttf";
constexpr int columns = 16;
constexpr int lines = 4;

/// A page of different emoji, and what is needed to draw them in either way.
class EmojiPage {
public:
    explicit EmojiPage(float size)
        : _engine(readFontFile(fontFile), nullptr, size)
        , _style{_engine.faceInfo, _engine.font.getFace(), size, 1.0F, 1.0F, {0, 0, 0, 255}}
        , _surface(CairoAdapter::makeImageSurface(getExtent(size, columns), getExtent(size, lines + 1)))
        , _painter(_surface.get())
        , _glyphPainter(_painter, {0, 0, 0, 255})
        , _context(CairoAdapter::makeContext(_surface.get())) {
        for (int i = 0; i != columns * lines; ++i) {
            const cinder::Vec2<float> pen(std::floor(advance * size) * static_cast<float>(i % columns),
                                          std::floor(advance * size) * static_cast<float>(i / columns + 1));
            add(static_cast<unsigned int>(0x1F600 + i), pen);
        }
    }

    std::size_t size() const { return _glyphs.size(); }
    PixelView getPixels() const { return viewPixels(_surface); }

    void clear() {
        cairo_set_operator(_context.get(), CAIRO_OPERATOR_CLEAR);
        cairo_paint(_context.get());
        cairo_set_operator(_context.get(), CAIRO_OPERATOR_OVER);
    }

    void drawByEngine() {
        std::vector<FontEngine::PlacedGlyph> glyphs = _glyphs; // those without colours would move
        FontEngine::drawColorGlyphs(_engine.factory->getColorGlyphs(), _style, _glyphPainter, glyphs.data(),
                                    glyphs.size());
    }

    void drawByCairo() {
        for (const Picture& picture : _pictures) {
            cairo_set_source_surface(_context.get(), picture.surface.get(), picture.x, picture.y);
            cairo_paint(_context.get());
        }
    }

private:
    static constexpr float advance = 1.3F; // in ems

    struct Picture {
        std::shared_ptr<const FontEngine::ColorGlyphImage> image;
        CairoAdapter::SurfacePtr surface; // of the image's pixels
        double x;
        double y;
    };

    static int getExtent(float size, int count) {
        return static_cast<int>(std::floor(advance * size)) * count + static_cast<int>(size);
    }

    void add(unsigned int character, const cinder::Vec2<float>& pen) {
        const auto index = _engine.font.getFace()->getBasicMetrics().getCharMap()[character].glyphIndex;
        const FontEngine::ColorGlyphInfo info(_style.faceInfo, index, _style.fontSize, 1.0F, 1.0F, nullptr,
                                              _style.foreground);
        auto image = _engine.factory->getColorGlyphs().getImage(info, _style.face);
        CairoAdapter::SurfacePtr surface = CairoAdapter::adoptSurface(cairo_image_surface_create_for_data(
            image->buffer, CAIRO_FORMAT_ARGB32, static_cast<int>(image->width), static_cast<int>(image->rows),
            image->pitch));
        _glyphs.push_back({index, true, character, pen});
        const double x = pen.x + static_cast<float>(image->left);
        const double y = pen.y - static_cast<float>(image->top);
        _pictures.push_back({std::move(image), std::move(surface), x, y});
    }

    BenchEngine _engine;
    FontEngine::ColorGlyphStyle _style;
    CairoAdapter::SurfacePtr _surface;
    CairoAdapter::CairoPainter _painter;
    CairoAdapter::CairoGlyphPainter _glyphPainter;
    CairoAdapter::ContextPtr _context;
    std::vector<FontEngine::PlacedGlyph> _glyphs;
    std::vector<Picture> _pictures;
};

using Draw = void (EmojiPage::*)();

std::vector<unsigned char> copyDrawing(EmojiPage& page, Draw draw) {
    page.clear();
    (page.*draw)();
    const PixelView pixels = page.getPixels();
    return {pixels.data, pixels.data + pixels.stride * pixels.height};
}

/// Whether both ways draw the same, up to rounding, and something at all.
bool areAlike(EmojiPage& page) {
    const auto byEngine = copyDrawing(page, &EmojiPage::drawByEngine);
    const auto byCairo = copyDrawing(page, &EmojiPage::drawByCairo);
    const bool isBlank = std::all_of(byCairo.begin(), byCairo.end(), [](int byte) { return byte == 0; });
    return !isBlank && std::equal(byEngine.begin(), byEngine.end(), byCairo.begin(),
                                  [](int a, int b) { return std::abs(a - b) <= 1; });
}

void drawEmoji(benchmark::State& state, float size, Draw draw) {
    EmojiPage page(size);
    if (!areAlike(page)) {
        state.SkipWithError("cairo and the engine draw differently");
    }
    for (auto step : state) {
        (page.*draw)();
    }
    countItems(state, page.size());
}

const bool areRegistered = [] {
    for (const int size : {12, 20, 64, 109}) {
        const std::string group = "emoji/" + std::to_string(size) + " px";
        benchmark::RegisterBenchmark((group + "/engine").c_str(), drawEmoji, static_cast<float>(size),
                                     &EmojiPage::drawByEngine);
        benchmark::RegisterBenchmark((group + "/floor: cairo paints the images").c_str(), drawEmoji,
                                     static_cast<float>(size), &EmojiPage::drawByCairo);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
