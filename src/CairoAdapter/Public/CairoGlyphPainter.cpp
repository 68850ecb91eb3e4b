#include <CairoAdapter/Public/CairoGlyphPainter.h>

#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Private/GlyphBlender.h>
#include <CairoAdapter/Private/GlyphPlacement.h>
#include <CairoAdapter/Private/GlyphSurface.h>
#include <CairoAdapter/Public/CairoHandles.h>

#include <cmath>

namespace Vell::CairoAdapter {

namespace {

PatternPtr makePattern(const Internal::GlyphSurface& glyph, cairo_filter_t filter) {
    PatternPtr pattern = adoptPattern(cairo_pattern_create_for_surface(glyph.surface.get()));
    cairo_pattern_set_filter(pattern.get(), filter);
    return pattern;
}

/// SVG documents of cairo 1.16 lose the position of a mask and show it in their corner; images keep theirs. A
/// recording may be replayed into such a document.
bool misplacesMasks(cairo_t* context) {
    const cairo_surface_type_t type = cairo_surface_get_type(cairo_get_target(context));
    return type == CAIRO_SURFACE_TYPE_SVG || type == CAIRO_SURFACE_TYPE_RECORDING;
}

void blend(cairo_t* context, const Internal::GlyphSurface& glyph, cairo_pattern_t* pattern,
           const cinder::ColorAT<unsigned char>& color) {
    if (glyph.isCoverage) {
        Internal::setSource(context, color);
        cairo_mask(context, pattern);
    } else {
        cairo_set_source(context, pattern);
        cairo_paint(context);
    }
}

/// A channel of a premultiplied colour, computed over 16 bits, as cairo does it.
std::uint32_t premultiply(unsigned char channel, unsigned char alpha) {
    constexpr double max = 255.0;
    const auto wide = static_cast<std::uint32_t>(channel / max * (alpha / max) * 65536.0);
    return (wide - (wide >> 16)) >> 8;
}

std::uint32_t premultiply(const cinder::ColorAT<unsigned char>& color) {
    return std::uint32_t{color.a} << 24 | premultiply(color.r, color.a) << 16 |
           premultiply(color.g, color.a) << 8 | premultiply(color.b, color.a);
}

/// Opens the blender, unless it is null, and closes it at the end of the scope.
class BlenderScope {
public:
    explicit BlenderScope(Internal::GlyphBlender* blender)
        : _blender(blender) {
        if (_blender != nullptr) {
            _blender->open();
        }
    }
    BlenderScope(const BlenderScope&) = delete;
    BlenderScope& operator=(const BlenderScope&) = delete;
    ~BlenderScope() {
        if (_blender != nullptr) {
            _blender->close();
        }
    }

private:
    Internal::GlyphBlender* _blender;
};

} // namespace

CairoGlyphPainter::CairoGlyphPainter(CairoPainter& painter, const cinder::ColorAT<unsigned char>& color,
                                     float devicePixelRatio)
    : _painter(painter)
    , _color(color)
    , _premultipliedColor(premultiply(color))
    , _devicePixelRatio(devicePixelRatio)
    , _blender(std::make_unique<Internal::GlyphBlender>(painter, devicePixelRatio)) {
    if (!std::isfinite(devicePixelRatio) || devicePixelRatio <= 0.0F) {
        throw CairoAdapterException("the device pixel ratio must be finite and greater than 0");
    }
}

CairoGlyphPainter::~CairoGlyphPainter() = default;

void CairoGlyphPainter::drawGlyph(const FontEngine::BitmapGlyphImage& image,
                                  const cinder::Vec2<float>& position) {
    if (image.rows == 0 || image.width == 0 || image.buffer == nullptr) {
        return;
    }
    const BlenderScope scope(_isInRun ? nullptr : _blender.get());
    if (!_blender->tryBlend(image, position, _premultipliedColor)) {
        _blender->handOver();
        drawThroughCairo(image, position);
    }
}

void CairoGlyphPainter::drawColorGlyph(const std::shared_ptr<const FontEngine::ColorGlyphImage>& image,
                                       const cinder::Vec2<float>& position) {
    drawGlyph(*image, position);
}

void CairoGlyphPainter::beginGlyphRun() {
    _blender->open();
    _isInRun = true;
}

void CairoGlyphPainter::endGlyphRun() noexcept {
    _blender->close();
    _isInRun = false;
}

void CairoGlyphPainter::drawThroughCairo(const FontEngine::BitmapGlyphImage& image,
                                         const cinder::Vec2<float>& position) {
    Internal::GlyphSurface glyph = Internal::makeGlyphSurface(image);
    const cairo_matrix_t matrix =
        Internal::placeGlyph(position, _devicePixelRatio, _painter.getDeviceTransform());
    cairo_t* context = _painter.getContext();
    if (glyph.isCoverage && misplacesMasks(context)) {
        glyph = Internal::makeColoredSurface(glyph, _color);
    }
    if (Internal::isVisible(context, matrix, image.width, image.rows)) {
        const PatternPtr pattern =
            makePattern(glyph, Internal::chooseFilter(context, matrix, image.width, image.rows));
        const Internal::ContextState state(context);
        cairo_set_matrix(context, &matrix);
        blend(context, glyph, pattern.get(), _color);
    }
    throwIfFailed(cairo_status(context));
}

void CairoGlyphPainter::setColor(const cinder::ColorAT<unsigned char>& color) {
    _color = color;
    _premultipliedColor = premultiply(color);
}

} // namespace Vell::CairoAdapter
