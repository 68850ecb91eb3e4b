#include <fuzz/support/PaintNesting.h>

#include <fuzz/support/Finding.h>
#include <fuzz/support/GlyphRules.h>

namespace Vell::Fuzz {

namespace {

constexpr char transformKind = 't';
constexpr char clipKind = 'c';
constexpr char groupKind = 'g';

} // namespace

void PaintNesting::pushTransform(const cinder::MatrixAffine2<float>&) {
    _open += transformKind;
}

void PaintNesting::popTransform() {
    pop(transformKind);
}

void PaintNesting::pushClip(unsigned short) {
    _open += clipKind;
}

void PaintNesting::pushClip(const FontEngine::PaintBox&) {
    _open += clipKind;
}

void PaintNesting::popClip() {
    pop(clipKind);
}

void PaintNesting::fill(const FontEngine::PaintColor&) {
    require(_open.find(clipKind) != std::string::npos, "a fill has a clip");
}

void PaintNesting::fill(const FontEngine::LinearGradient& gradient) {
    checkFill(gradient.line);
}

void PaintNesting::fill(const FontEngine::RadialGradient& gradient) {
    checkFill(gradient.line);
}

void PaintNesting::fill(const FontEngine::SweepGradient& gradient) {
    checkFill(gradient.line);
}

void PaintNesting::pushGroup() {
    _open += groupKind;
}

void PaintNesting::popGroup(FontEngine::CompositeMode) {
    pop(groupKind);
}

void PaintNesting::drawImage(const FontEngine::BitmapGlyphImage& image, const FontEngine::PaintBox&) {
    require(_open.empty(), "a bitmap is drawn with nothing else");
    checkPixels(image);
}

void PaintNesting::check() const {
    require(_open.empty(), "every push of a drawing has its pop");
}

void PaintNesting::pop(char kind) {
    require(!_open.empty() && _open.back() == kind, "pushes and pops of a drawing are paired");
    _open.pop_back();
}

void PaintNesting::checkFill(const FontEngine::ColorLine& line) const {
    require(_open.find(clipKind) != std::string::npos, "a fill has a clip");
    require(!line.stops.empty(), "a gradient has colours");
}

} // namespace Vell::Fuzz
