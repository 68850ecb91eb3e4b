// A client that knows nothing but the installed headers: draws a string and counts the ink.

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <cstdio>
#include <exception>

using namespace Vell;

namespace {

class InkCounter : public FontEngine::BitmapGlyphPainter {
public:
    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>&) override {
        for (unsigned int row = 0; row < image.rows; ++row) {
            for (int byte = 0; byte < image.pitch; ++byte) {
                ink += image.buffer[static_cast<int>(row) * image.pitch + byte];
            }
        }
    }

    unsigned long ink = 0;
};

class NullPath : public Gfx::Path {};

class IdentityPainter : public Gfx::Painter {
public:
    void beginPath() override {}
    void moveTo(const cinder::Vec2<float>&) override {}
    void lineTo(const cinder::Vec2<float>&) override {}
    void cubicTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&,
                 const cinder::Vec2<float>&) override {}
    void quadTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&) override {}
    std::shared_ptr<const Gfx::Path> takePath() override { return std::make_shared<NullPath>(); }
    void drawPath(const Gfx::Path&, bool) override { ++paths; }
    void resetTransform() override {}
    void translate(const cinder::Vec2<float>&) override {}
    void scale(const cinder::Vec2<float>&) override {}
    cinder::MatrixAffine2<float> getTransform() const override { return {}; }
    void rotate(float) override {}
    void pushTransform() override {}
    void popTransform() override {}

    int paths = 0;
};

} // namespace

int main() {
    try {
        const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
        const auto face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>("DejaVu Sans", true, false);
        const auto info =
            makeNNPtr<const FontEngine::Internal::FontInfo>(face, 20.0F, Gfx::TextPositionType::Normal);
        const FontEngine::Font font = factory->getFont(info);
        const CheckedPtrImpl<const Gfx::ExtFontInfo, false> style =
            makeNNPtr<FontEngine::Internal::ExtFontInfo>(info);

        IdentityPainter painter;
        InkCounter counter;
        FontEngine::RasterTextPainter(painter, counter, false)
            .drawText("Ink_", style, font, {0, 0, 0, 255}, 1.0F);
        FontEngine::VectorTextPainter(painter).drawText("Ink_", style, font);
        std::printf("ink %lu, paths %d, width %.2f, gamma %u\n", counter.ink, painter.paths,
                    static_cast<double>(font.getTextWidth("Ink_", style)),
                    FontEngine::Internal::encodeGamma(128, 1.2F));
        return counter.ink > 0 && painter.paths == 4 ? 0 : 1;
    } catch (const BaseRuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
