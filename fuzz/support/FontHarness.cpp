#include <fuzz/support/Harness.h>

#include <fuzz/support/Finding.h>
#include <fuzz/support/FontScript.h>
#include <fuzz/support/GlyphRules.h>
#include <fuzz/support/PaintNesting.h>
#include <fuzz/support/TextCalls.h>
#include <fuzz/support/Tolerate.h>

#include <FontEngine/Color/FE_ColorGlyphs.h>
#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/OpenedFont.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace Vell::Fuzz {

namespace {

using FontLoaders::FreeTypeException;

constexpr const char* family = "Fuzzed";

/// Whether the engine may get the file. By contract, a face without any charmap fails an assertion, so the
/// harness keeps it from the engine.
bool hasCharMapOrIsRefused(const Bytes& file) {
    try {
        return Testing::OpenedFont(file)->num_charmaps > 0;
    } catch (const FreeTypeException&) {
        return true;
    }
}

/// Makes a factory with the font as the regular style of its family, so that other styles are synthesised.
NNPtr<FontEngine::FontFactory> makeFactory(Bytes file) {
    const auto loader = std::make_shared<Testing::CountingLoader>();
    loader->setFont(family, false, false, std::move(file));
    return FontEngine::FontFactory::create(loader, family);
}

/// What the harness does with an open face.
class FaceRun {
public:
    FaceRun(const FontScript& script, const Testing::FontInfoPtr& fontInfo, FontEngine::Font font)
        : _script(script)
        , _fontInfo(fontInfo)
        , _font(std::move(font))
        , _face(_font.getFace()) {}

    void run() {
        if (_script.asksFor(Service::metrics)) {
            measure();
        }
        for (const unsigned int glyph : chooseGlyphs()) {
            render(glyph);
        }
        drawText();
    }

private:
    void measure() const {
        measureLine(_font);
        checkCountedChars(getText(), 50.0F, Testing::makeExtFontInfo(_fontInfo), _font);
    }

    /// The glyphs that the script names and, for corner cases, the first, the last and a missing one.
    std::vector<unsigned int> chooseGlyphs() const {
        const auto count = static_cast<unsigned int>(std::max(_face->getHandle()->num_glyphs, 0L));
        std::vector<unsigned int> glyphs(_script.glyphs.begin(), _script.glyphs.end());
        if (_script.asksFor(Service::cornerCases)) {
            glyphs.insert(glyphs.end(), {0, count - 1, count});
        }
        return glyphs;
    }

    void render(unsigned int glyph) const {
        if (_script.asksFor(Service::bitmaps)) {
            renderBitmap(glyph);
        }
        if (_script.asksFor(Service::outlines)) {
            renderOutline(glyph);
        }
        if (_script.asksFor(Service::colors)) {
            renderColors(glyph);
        }
    }

    void renderBitmap(unsigned int glyph) const {
        const auto key = _script.makeKey(*_face, _fontInfo->getFontFaceInfo(), glyph);
        std::shared_ptr<const FT_BitmapGlyphRec_> bitmap;
        if (tolerate<FreeTypeException>([&] { bitmap = _face->getBitmapGlyph(key, _script.isFlipped); }) &&
            bitmap) {
            checkBitmap(bitmap->bitmap);
            renderImage(FontEngine::BitmapGlyph(bitmap, {0.0F, 0.0F}, key));
        }
    }

    void renderImage(const FontEngine::BitmapGlyph& glyph) const {
        constexpr cinder::ColorAT<unsigned char> color(10, 20, 200, 255);
        const FT_Bitmap& bitmap = glyph.getData()->bitmap;
        const bool isMade = tolerate<FontEngine::FontEngineException>(
            [&] { checkImage(*_face->getGlyphBitmapWithSubpixels(glyph, color), bitmap); });
        require(isMade == (bitmap.pixel_mode == FT_PIXEL_MODE_LCD), "LCD bitmaps and no others are coloured");
    }

    void renderOutline(unsigned int glyph) const {
        const FontEngine::GlyphInfo key(_fontInfo->getFontFaceInfo(), glyph, _script.fontSize,
                                        _face->getTransform());
        Testing::RecordingPainter painter;
        std::shared_ptr<const Gfx::Path> path;
        tolerate<FreeTypeException>([&] { path = _face->getOutlineGlyphPath(key, painter); });
        if (path) {
            checkPath(dynamic_cast<const Testing::RecordedPath&>(*path));
        }
    }

    /// Large images only take time.
    void renderColors(unsigned int glyph) const {
        constexpr float largest = 200.0F;
        constexpr FontEngine::PaintColor foreground(10, 20, 200, 128);
        const FontEngine::ColorGlyphs& colors = _face->getFontFactory().getColorGlyphs();
        const FontEngine::ColorGlyphInfo key(_fontInfo->getFontFaceInfo(), glyph, _script.fontSize,
                                             _script.scale.x, _script.devicePixelRatio, nullptr, foreground);
        if (key.getPixelsPerEm() > largest) {
            return;
        }
        PaintNesting nesting;
        bool isPainted = false;
        std::shared_ptr<const FontEngine::ColorGlyphImage> image;
        tolerate<FreeTypeException>([&] {
            image = colors.getImage(key, _face);
            isPainted = colors.paint(key, _face, nesting);
        });
        nesting.check();
        if (image) {
            require(isPainted, "a glyph that has an image can be painted");
            checkColorImage(*image);
        }
    }

    void drawText() const {
        const auto extFontInfo = Testing::makeExtFontInfo(_fontInfo, 0.5F);
        TextPlace place;
        place.transform = {_script.scale.x, 0.0F, 0.0F, _script.scale.y, 10.0F, 20.0F};
        place.devicePixelRatio = _script.devicePixelRatio;
        place.isFlipped = _script.isFlipped;
        if (_script.asksFor(Service::rasterText)) {
            tolerate<FreeTypeException>([&] { drawRaster(getText(), extFontInfo, _font, place); });
        }
        if (_script.asksFor(Service::vectorText)) {
            tolerate<FreeTypeException>([&] { drawVector(getText(), extFontInfo, _font, place); });
        }
    }

    static std::string getText() { return "A__ b\xC3\xA9"; }

    const FontScript& _script;
    Testing::FontInfoPtr _fontInfo;
    FontEngine::Font _font;
    NNPtr<const FontEngine::FontFace> _face;
};

} // namespace

void runFont(const Bytes& input) {
    ByteReader reader(input);
    const FontScript script(reader);
    Bytes file = reader.takeRest();
    if (!hasCharMapOrIsRefused(file)) {
        require(FontLoaders::findReasonNotToServe(makeNNPtr<const Bytes>(file)).has_value(),
                "no loader serves a face without any charmap");
        return;
    }
    const auto factory = makeFactory(std::move(file));
    const auto faceInfo = Testing::makeFaceInfo(family, script.isBold, script.isItalic);
    const auto fontInfo = Testing::makeFontInfo(faceInfo, script.fontSize, script.position);
    std::unique_ptr<FaceRun> run;
    try {
        run = std::make_unique<FaceRun>(script, fontInfo, factory->getFont(fontInfo));
    } catch (const FreeTypeException&) {
        return; // not a font, or one with contradictory tables
    } catch (const BadNumCastError&) {
        return; // a character code exceeds 32 bits
    }
    run->run();
}

} // namespace Vell::Fuzz
