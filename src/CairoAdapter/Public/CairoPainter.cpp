#include <CairoAdapter/Public/CairoPainter.h>

#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Private/Color/ColorTarget.h>
#include <CairoAdapter/Private/Polyline.h>
#include <CairoAdapter/Private/RecordedPath.h>
#include <CairoAdapter/Public/CairoHandles.h>
#include <Utils/Public/Assert.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Vell::CairoAdapter {

namespace {

constexpr const char* sourceFile = "CairoAdapter/Public/CairoPainter";

cairo_matrix_t getMatrix(cairo_t* context) {
    cairo_matrix_t matrix;
    cairo_get_matrix(context, &matrix);
    return matrix;
}

void fill(cairo_t* context) {
    cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);
    cairo_fill(context);
}

/// The pen takes the matrix, so that it is stretched and slanted like the path. The width is limited, because
/// cairo computes every corner of a huge pen, although none of them can be seen.
void stroke(cairo_t* context, const cairo_matrix_t& matrix, double lineWidth) {
    const cairo_matrix_t toPixels = Internal::chain(matrix, Internal::getSurfaceTransform(context));
    const double magnification =
        std::max(std::hypot(toPixels.xx, toPixels.yx), std::hypot(toPixels.xy, toPixels.yy));
    cairo_set_matrix(context, &matrix);
    cairo_set_line_width(context, std::min(lineWidth, Internal::maxSurfaceCoordinate / magnification));
    cairo_stroke(context);
}

/// The matrix that leads from font units, y pointing up, to the units that the matrix for outlines leads to.
cairo_matrix_t pointUp(const cairo_matrix_t& matrix) {
    return Internal::chain({1.0, 0.0, 0.0, -1.0, 0.0, 0.0}, matrix);
}

} // namespace

CairoPainter::CairoPainter(cairo_t* context, const cinder::MatrixAffine2<float>& baseTransform)
    : CairoPainter(shareContext(context), baseTransform) {}

CairoPainter::CairoPainter(cairo_surface_t* surface, const cinder::MatrixAffine2<float>& baseTransform)
    : CairoPainter(makeContext(surface), baseTransform) {}

CairoPainter::CairoPainter(ContextPtr context, const cinder::MatrixAffine2<float>& baseTransform)
    : _context(std::move(context))
    , _baseTransform(Internal::chain(Internal::toCairoMatrix(baseTransform), getMatrix(_context.get())))
    , _path(std::make_shared<Internal::RecordedPath>()) {
    throwIfFailed(cairo_surface_status(cairo_get_group_target(_context.get())));
}

CairoPainter::~CairoPainter() = default;

void CairoPainter::beginPath() {
    _path = std::make_shared<Internal::RecordedPath>();
}

void CairoPainter::moveTo(const cinder::Vec2<float>& point) {
    _path->moveTo(point);
}

void CairoPainter::lineTo(const cinder::Vec2<float>& point) {
    _path->lineTo(point);
}

void CairoPainter::cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                           const cinder::Vec2<float>& end) {
    _path->cubicTo(control1, control2, end);
}

void CairoPainter::quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) {
    _path->quadTo(control, end);
}

std::shared_ptr<const Gfx::Path> CairoPainter::takePath() {
    return std::exchange(_path, std::make_shared<Internal::RecordedPath>());
}

void CairoPainter::drawPath(const Gfx::Path& path, bool isFilled) {
    const Internal::RecordedPath& recorded = Internal::getRecordedPath(path);
    const cairo_matrix_t matrix = getDeviceTransform();
    const bool hasPen = std::isfinite(_lineWidth) && _lineWidth > 0.0F;
    if (!Internal::isDrawable(matrix) || !(isFilled || hasPen)) {
        return;
    }
    {
        const Internal::ContextState state(getContext());
        cairo_identity_matrix(getContext());
        cairo_new_path(getContext());
        Internal::setSource(getContext(), _color);
        const auto use = isFilled ? Internal::PathUse::Fill : Internal::PathUse::Stroke;
        if (Internal::tryReplay(recorded, matrix, use, getContext())) {
            isFilled ? fill(getContext()) : stroke(getContext(), matrix, static_cast<double>(_lineWidth));
        }
    }
    throwIfFailed(cairo_status(getContext()));
}

bool CairoPainter::drawColorGlyph(const FontEngine::ColorGlyphInfo& info,
                                  const NNPtr<const FontEngine::FontFace>& face,
                                  const std::function<bool(FontEngine::ColorPaintTarget& target)>& paint) {
    const auto findOutline = [&](unsigned short glyphIndex) {
        const FontEngine::GlyphInfo outline(info.getFaceInfo(), glyphIndex, info.getFontSize(),
                                            FontEngine::GlyphTransform::None);
        return face->getOutlineGlyphPath(outline, *this);
    };
    bool isDrawn = false;
    {
        const Internal::ContextState state(getContext());
        Internal::ColorTarget target(getContext(), pointUp(getDeviceTransform()), findOutline);
        isDrawn = paint(target);
        target.finish();
    }
    throwIfFailed(cairo_status(getContext()));
    return isDrawn;
}

void CairoPainter::resetTransform() {
    _transform = {};
}

void CairoPainter::translate(const cinder::Vec2<float>& offset) {
    _transform = _transform * cinder::MatrixAffine2<float>(1.0F, 0.0F, 0.0F, 1.0F, offset.x, offset.y);
}

void CairoPainter::scale(const cinder::Vec2<float>& factors) {
    _transform = _transform * cinder::MatrixAffine2<float>(factors.x, 0.0F, 0.0F, factors.y, 0.0F, 0.0F);
}

cinder::MatrixAffine2<float> CairoPainter::getTransform() const {
    return _transform;
}

void CairoPainter::rotate(float radians) {
    const float cosine = std::cos(radians);
    const float sine = std::sin(radians);
    _transform = _transform * cinder::MatrixAffine2<float>(cosine, sine, -sine, cosine, 0.0F, 0.0F);
}

void CairoPainter::pushTransform() {
    _savedTransforms.push_back(_transform);
}

void CairoPainter::popTransform() {
    if (_savedTransforms.empty()) {
        doFailAssert(sourceFile, 156, "!_savedTransforms.empty()", "popTransform without pushTransform");
    }
    _transform = _savedTransforms.back();
    _savedTransforms.pop_back();
}

void CairoPainter::setColor(const cinder::ColorAT<unsigned char>& color) {
    _color = color;
}

void CairoPainter::setLineWidth(float width) {
    _lineWidth = width;
}

cairo_matrix_t CairoPainter::getDeviceTransform() const {
    return Internal::chain(Internal::toCairoMatrix(_transform), _baseTransform);
}

} // namespace Vell::CairoAdapter
