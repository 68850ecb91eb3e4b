// Compares glyphs that are blended into images without cairo with those that cairo draws.

#include "GlyphDrawings.h"

#include <random>

namespace Vell::CairoAdapter::Testing {

namespace {

using Random = std::mt19937;
using Matrix = cinder::MatrixAffine2<float>;

template <class Value>
const Value& pick(Random& random, const std::vector<Value>& values) {
    return values[random() % values.size()];
}

int drawInt(Random& random, int first, int last) {
    return std::uniform_int_distribution<int>(first, last)(random);
}

unsigned char drawByte(Random& random) {
    return static_cast<unsigned char>(pick(random, std::vector<int>{0, 255, drawInt(random, 0, 255)}));
}

/// A bitmap of the mode, with a pitch of either sign that may be longer than needed.
Bitmap drawBitmap(Random& random, unsigned char mode) {
    const int width = drawInt(random, 1, 20);
    const int rows = drawInt(random, 1, 16);
    const bool isColored = mode == FT_PIXEL_MODE_LCD || mode == FT_PIXEL_MODE_BGRA;
    const int pitch = width * (isColored ? 4 : 1) + drawInt(random, 0, 3);
    std::vector<unsigned char> content(static_cast<std::size_t>(pitch * rows));
    std::generate(content.begin(), content.end(), [&random] { return drawByte(random); });
    return {mode, static_cast<unsigned int>(width), static_cast<unsigned int>(rows),
            pick(random, std::vector<int>{pitch, -pitch}), std::move(content)};
}

float drawCoordinate(Random& random, int end) {
    const float whole = static_cast<float>(drawInt(random, -20, end + 5));
    const float fraction = static_cast<float>(drawInt(random, 0, 4096)) / 4096.0F;
    return pick(random, std::vector<float>{whole, whole, whole + fraction, whole + 0.001F, -1e9F});
}

/// Clips that are one box of whole pixels, unless the surface has a transform.
const std::vector<Drawing>& getBoxClips() {
    static const std::vector<Drawing> clips{
        [](cairo_t*) {},
        [](cairo_t* context) { clipTo(context, 5, 6, 30, 17); },
        [](cairo_t* context) { clipTo(context, -5, -6, 30, 17); },
        [](cairo_t* context) {
            clipTo(context, 2, 2, 30, 17);
            clipTo(context, 11, 1, 100, 100);
        },
        [](cairo_t* context) { clipTo(context, 9, 8, 1, 1); },
    };
    return clips;
}

const std::vector<Drawing>& getOtherClips() {
    static const std::vector<Drawing> clips{
        [](cairo_t* context) {
            cairo_rectangle(context, 2, 3, 10, 12);
            clipTo(context, 20, 9, 15, 20);
        },
        [](cairo_t* context) { clipTo(context, 5.5, 6.25, 30, 17); },
        [](cairo_t* context) { // a round clip with the extents of the picture
            cairo_save(context);
            cairo_scale(context, FramedImage::width / 2.0, FramedImage::height / 2.0);
            cairo_arc(context, 1, 1, 1, 0, 7);
            cairo_restore(context);
            cairo_clip(context);
        },
        [](cairo_t* context) { clipTo(context, 100, 100, 5, 5); },
    };
    return clips;
}

/// A random drawing of some glyphs, the same for the same seed.
struct RandomScene {
    explicit RandomScene(unsigned int seed)
        : _seed(seed) {}

    cairo_format_t getFormat() const {
        constexpr cairo_format_t formats[] = {CAIRO_FORMAT_ARGB32, CAIRO_FORMAT_RGB24, CAIRO_FORMAT_A8};
        return formats[_seed % 8 < 4 ? 0 : _seed % 8 < 7 ? 1 : 2];
    }

    void draw(cairo_surface_t* surface) const {
        Random random(_seed);
        const double scale = pick<double>(random, {1, 1, 1, 2, 1.5, 3});
        cairo_surface_set_device_scale(surface, scale, scale);
        const double offset = pick<double>(random, {0, 0, 3, -2, 0.5});
        cairo_surface_set_device_offset(surface, offset, -offset);
        const ContextPtr context = makeContext(surface);
        pick(random, drawInt(random, 0, 2) == 0 ? getOtherClips() : getBoxClips())(context.get());
        const bool isGroup = drawInt(random, 0, 3) == 0;
        if (isGroup) {
            cairo_push_group(context.get());
        }
        cairo_set_operator(context.get(),
                           pick<cairo_operator_t>(random, {CAIRO_OPERATOR_OVER, CAIRO_OPERATOR_OVER,
                                                           CAIRO_OPERATOR_OVER, CAIRO_OPERATOR_ADD}));
        drawGlyphs(random, context.get(), static_cast<float>(scale));
        if (isGroup) {
            cairo_pop_group_to_source(context.get());
            cairo_set_operator(context.get(), CAIRO_OPERATOR_OVER);
            cairo_paint(context.get());
        }
    }

private:
    static void drawGlyphs(Random& random, cairo_t* context, float scale) {
        const float factor = pick<float>(random, {1, 1, 1, 2, 1.1F});
        CairoPainter painter(context, Matrix(factor, 0, 0, factor, 0, 0));
        painter.translate({pick<float>(random, {0, 3, -0.75F, 0.3F}), pick<float>(random, {0, 1, 0.5F})});
        painter.rotate(pick<float>(random, {0, 0, 0, 0, 0, quarterTurn, 0.2F}));
        CairoGlyphPainter glyphPainter(painter, drawColor(random),
                                       pick<float>(random, {scale * factor, 1.0F}));
        const bool isRun = drawInt(random, 0, 1) == 0;
        if (isRun) {
            glyphPainter.beginGlyphRun();
        }
        for (int i = 0; i < 6; ++i) {
            const Bitmap bitmap =
                drawBitmap(random, pick<unsigned char>(random, {FT_PIXEL_MODE_GRAY, FT_PIXEL_MODE_GRAY,
                                                                FT_PIXEL_MODE_GRAY, FT_PIXEL_MODE_MONO,
                                                                FT_PIXEL_MODE_LCD, FT_PIXEL_MODE_BGRA}));
            const float x = drawCoordinate(random, FramedImage::width);
            const float y = drawCoordinate(random, FramedImage::height);
            glyphPainter.drawGlyph(bitmap.image, {x, y});
            glyphPainter.setColor(drawColor(random));
        }
        if (isRun) {
            glyphPainter.endGlyphRun();
        }
    }

    static cinder::ColorAT<unsigned char> drawColor(Random& random) {
        return {drawByte(random), drawByte(random), drawByte(random),
                pick<unsigned char>(random, {255, drawByte(random)})};
    }

    unsigned int _seed;
};

/// With cairo 1.16 and pixman 0.42 there is no difference at all.
TEST(CairoGlyphBlending, IsWithinOneLevelOfCairoWhateverIsDrawn) {
    int withoutCairo = 0;
    for (unsigned int seed = 0; seed < 2000; ++seed) {
        const RandomScene scene(seed);
        const Comparison result =
            compareWithCairo(scene.getFormat(), [&scene](cairo_surface_t* surface) { scene.draw(surface); });
        ASSERT_LE(result.difference, 1) << seed;
        ASSERT_TRUE(result.isWithinFrame) << seed;
        withoutCairo += result.drawings == 0 ? 1 : 0;
    }
    EXPECT_GT(withoutCairo, 500) << "the adapter drew too few scenes without cairo";
}

} // namespace

} // namespace Vell::CairoAdapter::Testing
