#include "EnginePage.h"

namespace Vell::Benchmarks {

EnginePage::EnginePage(const Scene& scene)
    : _workload(scene.workload)
    , _ratio(static_cast<float>(scene.ratio))
    , _engine(scene.workload)
    , _surface(makePage(scene))
    , _painter(_surface.get(), {_ratio, 0.0F, 0.0F, _ratio, 0.0F, 0.0F})
    , _glyphPainter(_painter, scene.workload.ink, _ratio)
    , _text(_painter, _glyphPainter, false) {}

void EnginePage::drawLine(std::size_t line, double y) {
    _painter.pushTransform();
    _painter.translate({static_cast<float>(leftMargin), static_cast<float>(y)});
    _text.drawText(_workload.lines[line], _engine.extFontInfo, _engine.font, _workload.ink, _ratio);
    _painter.popTransform();
}

} // namespace Vell::Benchmarks
