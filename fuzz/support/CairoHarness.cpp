#include <fuzz/support/Harness.h>

#include <fuzz/support/CairoGlyphs.h>
#include <fuzz/support/CairoPicture.h>
#include <fuzz/support/CairoRules.h>
#include <fuzz/support/CairoScript.h>
#include <fuzz/support/ColorPaintScript.h>
#include <fuzz/support/Finding.h>
#include <fuzz/support/Tolerate.h>

#include <CairoAdapter/CairoAdapter.h>
#include <support/RecordingPainter.h>

#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace Vell::Fuzz {

namespace {

using CairoAdapter::CairoAdapterException;
using CairoAdapter::CairoGlyphPainter;
using CairoAdapter::CairoPainter;
using Point = cinder::Vec2<float>;

/// A surface with its context and its painters.
struct Easel {
    Easel(CairoAdapter::SurfacePtr target, const CairoScene& scene)
        : surface(std::move(target))
        , context(makeContext(surface.get(), scene))
        , painter(context.get(), scene.base)
        , glyphPainter(painter, scene.color, scene.ratio)
        , settings(context.get()) {
        painter.setColor(scene.color);
    }

    static CairoAdapter::ContextPtr makeContext(cairo_surface_t* surface, const CairoScene& scene) {
        cairo_surface_set_device_scale(surface, scene.deviceScale.x, scene.deviceScale.y);
        cairo_surface_set_device_offset(surface, scene.deviceOffset.x, scene.deviceOffset.y);
        CairoAdapter::ContextPtr made = CairoAdapter::makeContext(surface);
        scene.prepare(made.get());
        return made;
    }

    CairoAdapter::SurfacePtr surface;
    CairoAdapter::ContextPtr context;
    CairoPainter painter;
    CairoGlyphPainter glyphPainter;
    ContextSettings settings;
};

/// A sub-surface that covers the whole surface, for which the adapter leaves all drawing to cairo.
CairoAdapter::SurfacePtr makeSurfaceForCairo(cairo_surface_t* whole, const CairoScene& scene) {
    return CairoAdapter::adoptSurface(
        cairo_surface_create_for_rectangle(whole, 0.0, 0.0, scene.width, scene.height));
}

/// Plays a script on an image. Also draws its glyphs through cairo alone, on a second image.
class CairoDuel {
public:
    CairoDuel(const CairoScene& scene, ByteReader& reader)
        : _reader(reader)
        , _picture(scene.format, scene.width, scene.height)
        , _reference(scene.format, scene.width, scene.height)
        , _referenceImage(_reference.makeSurface())
        , _easel(_picture.makeSurface(), scene)
        , _referenceEasel(makeSurfaceForCairo(_referenceImage.get(), scene), scene) {}

    void run() {
        while (!_reader.isAtEnd()) {
            play(takeCairoOperation(_reader));
            checkTransform();
        }
        cairo_surface_flush(_easel.surface.get());
        _picture.checkFrame();
        _reference.checkFrame();
    }

private:
    using Kind = CairoOperation;

    void play(CairoOperation operation) {
        switch (operation) {
        case Kind::BeginPath:
            return _easel.painter.beginPath();
        case Kind::MoveTo:
            return _easel.painter.moveTo(takePoint());
        case Kind::LineTo:
            return _easel.painter.lineTo(takePoint());
        case Kind::QuadTo:
            return addQuad();
        case Kind::CubicTo:
            return addCubic();
        case Kind::TakePath:
            _path = _easel.painter.takePath();
            return require(_path != nullptr, "a painter always has a path");
        case Kind::Fill:
            return drawPath(true);
        case Kind::Stroke:
            return drawPath(false);
        case Kind::LineWidth:
            return _easel.painter.setLineWidth(_reader.takeMeasure());
        case Kind::Glyph:
            return drawGlyph();
        case Kind::GlyphRun:
            return drawGlyphRun();
        case Kind::Color:
            return setColor();
        case Kind::Break:
            return breakContexts();
        case Kind::ColorGlyph:
            return drawColors();
        default:
            return changeTransforms(operation);
        }
    }

    Point takePoint() {
        const float x = _reader.takeMeasure();
        const float y = _reader.takeMeasure();
        return {x - originOfPoints, y - originOfPoints};
    }

    void addQuad() {
        const Point control = takePoint();
        _easel.painter.quadTo(control, takePoint());
    }

    void addCubic() {
        const Point control1 = takePoint();
        const Point control2 = takePoint();
        _easel.painter.cubicTo(control1, control2, takePoint());
    }

    void changeTransforms(CairoOperation operation) {
        if (operation == Kind::Pop && _depth == 0) {
            return; // the contract demands an assertion here
        }
        _depth += operation == Kind::Push ? 1 : 0;
        _depth -= operation == Kind::Pop ? 1 : 0;
        const Point operand = takesOperand(operation) ? takeFactors(operation) : Point{0.0F, 0.0F};
        for (Gfx::Painter* const painter :
             {static_cast<Gfx::Painter*>(&_easel.painter),
              static_cast<Gfx::Painter*>(&_referenceEasel.painter), static_cast<Gfx::Painter*>(&_model)}) {
            changeTransform(*painter, operation, operand);
        }
    }

    Point takeFactors(CairoOperation operation) {
        if (operation == Kind::Translate) {
            return takePoint();
        }
        const float x = _reader.takeFactor();
        return {x, operation == Kind::Scale ? _reader.takeFactor() : 0.0F};
    }

    void checkTransform() {
        const cinder::MatrixAffine2<float> transform = _easel.painter.getTransform();
        const cinder::MatrixAffine2<float> expected = _model.getTransform();
        _model.clearOperations();
        for (std::size_t i = 0; i < 6; ++i) {
            const bool areNaN = transform.m[i] != transform.m[i] && expected.m[i] != expected.m[i];
            require(areNaN || transform.m[i] == expected.m[i], "transforms are applied in order");
        }
    }

    void drawPath(bool isFilled) {
        if (!_path) {
            return;
        }
        const bool isDrawn =
            tolerate<CairoAdapterException>([&] { _easel.painter.drawPath(*_path, isFilled); });
        require(isDrawn || _isBroken, "a context that works draws every path");
        checkContexts();
    }

    void setColor() {
        const cinder::ColorAT<unsigned char> color = takeColor(_reader);
        for (Easel* const easel : {&_easel, &_referenceEasel}) {
            easel->painter.setColor(color);
            easel->glyphPainter.setColor(color);
        }
    }

    void drawGlyphRun() {
        _easel.glyphPainter.beginGlyphRun();
        const unsigned int count = _reader.takeU8() % 8;
        for (unsigned int i = 0; i < count; ++i) {
            const ScriptedGlyph glyph(_reader);
            _isComparable = _isComparable && glyph.hasValidColors();
            draw(_easel, glyph, takePoint());
        }
        _easel.glyphPainter.endGlyphRun();
        checkContexts();
    }

    void drawGlyph() {
        const ScriptedGlyph glyph(_reader);
        const Point position = takePoint();
        cairo_surface_flush(_easel.surface.get());
        _reference.copyPixels(_picture);
        cairo_surface_mark_dirty(_referenceImage.get());
        draw(_easel, glyph, position);
        checkContexts();
        draw(_referenceEasel, glyph, position);
        compare(glyph);
    }

    void drawColors() {
        const bool isDrawn = tolerate<CairoAdapterException>(
            [&] { static_cast<void>(drawScriptedColors(_reader, _easel.painter)); });
        require(isDrawn || _isBroken, "a context that works draws every colour glyph");
        checkContexts();
    }

    void draw(Easel& easel, const ScriptedGlyph& glyph, const Point& position) {
        const bool isDrawn = tolerate<CairoAdapterException>(
            [&] { easel.glyphPainter.drawGlyph(glyph.getImage(), position); });
        require(isDrawn || _isBroken || !glyph.isSound(), "a context that works draws every sound glyph");
    }

    void compare(const ScriptedGlyph& glyph) {
        cairo_surface_flush(_easel.surface.get());
        cairo_surface_flush(_referenceEasel.surface.get());
        cairo_surface_flush(_referenceImage.get());
        _isComparable = _isComparable && glyph.hasValidColors();
        require(!_isComparable || _picture.getGreatestDifference(_reference) <= 1,
                "no channel differs from cairo's by more than one level");
    }

    void breakContexts() {
        for (Easel* const easel : {&_easel, &_referenceEasel}) {
            if (_reader.takeU8() % 2 == 0) {
                cairo_scale(easel->context.get(), 0.0, 0.0);
            } else {
                cairo_surface_finish(easel->surface.get());
            }
        }
        _isBroken = true;
    }

    void checkContexts() const {
        if (!_isBroken) {
            checkContext(_easel.context.get(), _easel.settings);
        }
    }

    ByteReader& _reader;
    CairoPicture _picture;
    CairoPicture _reference;
    CairoAdapter::SurfacePtr _referenceImage;
    Easel _easel;
    Easel _referenceEasel;
    Testing::RecordingPainter _model;
    std::shared_ptr<const Gfx::Path> _path;
    unsigned int _depth = 0;
    bool _isBroken = false;
    bool _isComparable = true; ///< false after invalid colours, whose overflow may differ
};

} // namespace

void runCairo(const Bytes& input) {
    ByteReader reader(input);
    const CairoScene scene(reader);
    CairoDuel(scene, reader).run();
}

} // namespace Vell::Fuzz
