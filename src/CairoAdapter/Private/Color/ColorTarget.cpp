#include <CairoAdapter/Private/Color/ColorTarget.h>

#include <CairoAdapter/Private/CairoContext.h>
#include <CairoAdapter/Private/Color/GradientPatterns.h>
#include <CairoAdapter/Private/Color/SweepPattern.h>
#include <CairoAdapter/Private/GlyphPlacement.h>
#include <CairoAdapter/Private/GlyphSurface.h>
#include <CairoAdapter/Private/RecordedPath.h>
#include <Utils/Public/Assert.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Vell::CairoAdapter::Internal {

namespace {

constexpr const char* sourceFile = "CairoAdapter/Private/Color/ColorTarget";

/// In the order of the modes.
constexpr cairo_operator_t operators[] = {CAIRO_OPERATOR_CLEAR,      CAIRO_OPERATOR_SOURCE,
                                          CAIRO_OPERATOR_DEST,       CAIRO_OPERATOR_OVER,
                                          CAIRO_OPERATOR_DEST_OVER,  CAIRO_OPERATOR_IN,
                                          CAIRO_OPERATOR_DEST_IN,    CAIRO_OPERATOR_OUT,
                                          CAIRO_OPERATOR_DEST_OUT,   CAIRO_OPERATOR_ATOP,
                                          CAIRO_OPERATOR_DEST_ATOP,  CAIRO_OPERATOR_XOR,
                                          CAIRO_OPERATOR_ADD,        CAIRO_OPERATOR_SCREEN,
                                          CAIRO_OPERATOR_OVERLAY,    CAIRO_OPERATOR_DARKEN,
                                          CAIRO_OPERATOR_LIGHTEN,    CAIRO_OPERATOR_COLOR_DODGE,
                                          CAIRO_OPERATOR_COLOR_BURN, CAIRO_OPERATOR_HARD_LIGHT,
                                          CAIRO_OPERATOR_SOFT_LIGHT, CAIRO_OPERATOR_DIFFERENCE,
                                          CAIRO_OPERATOR_EXCLUSION,  CAIRO_OPERATOR_MULTIPLY,
                                          CAIRO_OPERATOR_HSL_HUE,    CAIRO_OPERATOR_HSL_SATURATION,
                                          CAIRO_OPERATOR_HSL_COLOR,  CAIRO_OPERATOR_HSL_LUMINOSITY};

std::shared_ptr<const RecordedPath> makeBox(const FontEngine::PaintBox& box) {
    auto path = std::make_shared<RecordedPath>();
    path->moveTo({box.left, -box.bottom});
    path->lineTo({box.right, -box.bottom});
    path->lineTo({box.right, -box.top});
    path->lineTo({box.left, -box.top});
    path->lineTo({box.left, -box.bottom});
    return path;
}

/// From the pixels of the image to the box, whose y axis points up.
cairo_matrix_t fitIntoBox(const FontEngine::BitmapGlyphImage& image, const FontEngine::PaintBox& box) {
    const double width = image.width;
    const double rows = image.rows;
    return {static_cast<double>(box.right - box.left) / width, 0.0,      0.0,
            static_cast<double>(box.bottom - box.top) / rows,  box.left, box.top};
}

} // namespace

ColorTarget::ColorTarget(cairo_t* context, const cairo_matrix_t& matrix, FindOutline findOutline)
    : _context(context)
    , _operator(cairo_get_operator(context))
    , _matrix(matrix)
    , _findOutline(std::move(findOutline)) {
    cairo_identity_matrix(_context);
    cairo_set_fill_rule(_context, CAIRO_FILL_RULE_WINDING);
    if (!isDrawable(matrix)) {
        cairo_new_path(_context);
        cairo_clip(_context);
    }
    if (_operator != CAIRO_OPERATOR_OVER) {
        pushGroup();
        cairo_set_operator(_context, CAIRO_OPERATOR_OVER);
    }
}

ColorTarget::~ColorTarget() {
    while (!_scopes.empty()) {
        if (_scopes.back().kind == Kind::Group) {
            cairo_pattern_destroy(cairo_pop_group(_context));
        }
        pop();
    }
}

void ColorTarget::finish() {
    if (_operator != CAIRO_OPERATOR_OVER) {
        popGroup(_operator);
    }
}

void ColorTarget::pushTransform(const cinder::MatrixAffine2<float>& transform) {
    _scopes.push_back({Kind::Transform, false, _matrix, nullptr});
    _matrix = chain(toCairoMatrix(transform), _matrix);
}

void ColorTarget::popTransform() {
    _matrix = getTop(Kind::Transform).matrix;
    pop();
}

void ColorTarget::pushClip(unsigned short glyphIndex) {
    push(_findOutline(glyphIndex));
}

void ColorTarget::pushClip(const FontEngine::PaintBox& box) {
    push(makeBox(box));
}

void ColorTarget::push(std::shared_ptr<const Gfx::Path> clip) {
    applyClip();
    constexpr cairo_matrix_t mirrorY{1.0, 0.0, 0.0, -1.0, 0.0, 0.0};
    _scopes.push_back({Kind::Clip, false, chain(mirrorY, _matrix), std::move(clip)});
}

void ColorTarget::popClip() {
    static_cast<void>(getTop(Kind::Clip));
    pop();
}

void ColorTarget::fill(const FontEngine::PaintColor& color) {
    Internal::setSource(_context, color);
    fillSource();
}

void ColorTarget::fill(const FontEngine::LinearGradient& gradient) {
    fillWithGradient(gradient);
}

void ColorTarget::fill(const FontEngine::RadialGradient& gradient) {
    if (isExpressible(_context, gradient)) {
        return fillWithGradient(gradient);
    }
    applyClip(); // the image is as large as the clip
    if (const auto toGradient = tryInvert(_matrix)) {
        const PatternPtr pattern = makeGradientPattern(gradient, 1.0);
        cairo_pattern_set_matrix(pattern.get(), &*toGradient);
        paintDevicePattern(toPixels(_context, pattern.get(), getClip(_context)));
    }
}

void ColorTarget::fill(const FontEngine::SweepGradient& gradient) {
    applyClip(); // the pattern is as large as the clip
    paintDevicePattern(makeSweepPattern(_context, _matrix, gradient));
}

void ColorTarget::pushGroup() {
    applyClip();
    _scopes.push_back({Kind::Group, false, _matrix, nullptr});
    cairo_push_group(_context);
    cairo_reset_clip(_context); // it applies when the group is combined
}

void ColorTarget::popGroup(FontEngine::CompositeMode mode) {
    popGroup(operators[static_cast<std::size_t>(mode)]);
}

void ColorTarget::popGroup(cairo_operator_t mode) {
    static_cast<void>(getTop(Kind::Group));
    pop();
    PatternPtr group = adoptPattern(cairo_pop_group(_context));
    if (isInGroup()) {
        _needsPixels = _needsPixels || !isExpressible(_context, mode);
    } else {
        const DeviceBox box = std::exchange(_groupBox, DeviceBox());
        group = std::exchange(_needsPixels, false) ? toPixels(_context, group.get(), box) : std::move(group);
    }
    if (group != nullptr) {
        cairo_set_source(_context, group.get());
        cairo_set_operator(_context, mode);
        cairo_paint(_context);
        cairo_set_operator(_context, CAIRO_OPERATOR_OVER);
    }
}

void ColorTarget::drawImage(const FontEngine::BitmapGlyphImage& image, const FontEngine::PaintBox& box) {
    if (image.rows == 0 || image.width == 0 || image.buffer == nullptr) {
        return;
    }
    applyClip();
    const cairo_matrix_t matrix = chain(fitIntoBox(image, box), _matrix);
    if (isVisible(_context, matrix, image.width, image.rows)) {
        const PatternPtr pattern =
            adoptPattern(cairo_pattern_create_for_surface(makeGlyphSurface(image).surface.get()));
        cairo_pattern_set_filter(pattern.get(), chooseFilter(_context, matrix, image.width, image.rows));
        setSource(pattern.get(), matrix);
        fillSource();
    }
}

const ColorTarget::Scope& ColorTarget::getTop(Kind kind) const {
    if (_scopes.empty() || _scopes.back().kind != kind) {
        doFailAssert(sourceFile, 104, "!_scopes.empty() && _scopes.back().kind == kind",
                     "a pop without its push");
    }
    return _scopes.back();
}

void ColorTarget::pop() {
    if (_scopes.back().isApplied) {
        cairo_restore(_context);
    }
    _scopes.pop_back();
}

/// The innermost clip if cairo does not have it yet, else null. Transforms may lie above it.
ColorTarget::Scope* ColorTarget::findPendingClip() {
    const auto top = std::find_if(_scopes.rbegin(), _scopes.rend(),
                                  [](const Scope& scope) { return scope.kind != Kind::Transform; });
    return top != _scopes.rend() && top->kind == Kind::Clip && !top->isApplied ? &*top : nullptr;
}

void ColorTarget::applyClip() {
    if (Scope* const clip = findPendingClip()) {
        cairo_save(_context);
        clip->isApplied = true;
        addPath(*clip);
        cairo_clip(_context);
    }
}

/// Leaves an empty path if the clip is empty or nothing can show it.
void ColorTarget::addPath(const Scope& clip) {
    cairo_new_path(_context);
    if (clip.path != nullptr && isDrawable(clip.matrix)) {
        tryReplay(getRecordedPath(*clip.path), clip.matrix, PathUse::Fill, _context);
    }
}

void ColorTarget::setSource(cairo_pattern_t* pattern, const cairo_matrix_t& matrix) {
    cairo_set_matrix(_context, &matrix);
    cairo_set_source(_context, pattern);
    cairo_identity_matrix(_context);
}

template <class Gradient>
void ColorTarget::fillWithGradient(const Gradient& gradient) {
    const auto toGradient = tryInvert(_matrix);
    const DeviceBox box = getFillBox();
    if (!toGradient || box.isEmpty()) {
        return;
    }
    const double scale = choosePatternScale(getExtent(gradient), box, *toGradient);
    const cairo_matrix_t matrix = chain({1.0 / scale, 0.0, 0.0, 1.0 / scale, 0.0, 0.0}, _matrix);
    if (isDrawable(matrix)) {
        setSource(makeGradientPattern(gradient, scale).get(), matrix);
        fillSource();
    }
}

/// What the next fill can change.
DeviceBox ColorTarget::getFillBox() {
    const DeviceBox clip = getClip(_context);
    const Scope* const pending = findPendingClip();
    if (pending == nullptr) {
        return clip;
    }
    addPath(*pending);
    DeviceBox path{};
    cairo_path_extents(_context, &path.left, &path.top, &path.right, &path.bottom);
    cairo_new_path(_context);
    return {std::max(path.left, clip.left), std::max(path.top, clip.top), std::min(path.right, clip.right),
            std::min(path.bottom, clip.bottom)};
}

void ColorTarget::paintDevicePattern(const PatternPtr& pattern) {
    if (pattern != nullptr) {
        cairo_set_source(_context, pattern.get());
        fillSource();
    }
}

void ColorTarget::fillSource() {
    if (isDocument(_context) && isInGroup()) {
        _groupBox = unite(_groupBox, getFillBox());
    }
    if (const Scope* const clip = findPendingClip()) {
        addPath(*clip);
        cairo_fill(_context);
    } else {
        cairo_paint(_context);
    }
}

bool ColorTarget::isInGroup() const {
    return std::any_of(_scopes.begin(), _scopes.end(),
                       [](const Scope& scope) { return scope.kind == Kind::Group; });
}

} // namespace Vell::CairoAdapter::Internal
