// Qt: layout of a line, with shaping, and drawText on an image. The texts are UTF-16 from the start, as in
// programs that use Qt.

#include "../support/Items.h"
#include "../support/Scene.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextLayout>

#include <stdexcept>
#include <string>
#include <vector>

namespace Vell::Benchmarks {

namespace {

/// The application object lives until the process ends.
void startQt() {
    static int argumentCount = 1;
    static char name[] = "fontengine_benchmarks";
    static char* arguments[] = {name, nullptr};
    static const auto* const application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return new QGuiApplication(argumentCount, arguments);
    }();
    benchmark::DoNotOptimize(application);
}

QFont makeFont(const Workload& workload) {
    startQt();
    const QString family = QString::fromStdString(workload.fontFamily);
    QFont font(family);
    font.setPixelSize(static_cast<int>(workload.pixelSize));
    font.setHintingPreference(
        QFont::PreferNoHinting); // with glyphs at fractions of a pixel, as in the engine
    if (QFontInfo(font).family() != family) {
        throw std::runtime_error("Qt cannot find " + workload.fontFamily);
    }
    return font;
}

std::vector<QString> convert(const Workload& workload) {
    std::vector<QString> lines;
    for (const std::string& line : workload.lines) {
        lines.push_back(QString::fromStdString(line));
    }
    return lines;
}

void layOut(benchmark::State& state, const Workload& workload) {
    const QFont font = makeFont(workload);
    const std::vector<QString> lines = convert(workload);
    for (auto step : state) {
        for (const QString& line : lines) {
            QTextLayout layout(line, font);
            layout.beginLayout();
            benchmark::DoNotOptimize(layout.createLine().naturalTextWidth());
            layout.endLayout();
        }
    }
    countItems(state, workload.countCharacters());
}

void draw(benchmark::State& state, const Scene& scene) {
    const QFont font = makeFont(scene.workload);
    const std::vector<QString> lines = convert(scene.workload);
    QImage page(scene.getWidth(), scene.getHeight(), QImage::Format_ARGB32_Premultiplied);
    page.fill(Qt::white);
    page.setDevicePixelRatio(scene.ratio);
    const PixelView pixels{page.constBits(), page.bytesPerLine(), page.width(), page.height()};
    QPainter painter(&page);
    painter.setFont(font);
    const cinder::ColorAT<unsigned char>& ink = scene.workload.ink;
    painter.setPen(QColor(ink.r, ink.g, ink.b));
    drawPage(state, scene, pixels,
             [&](std::size_t line, double y) { painter.drawText(QPointF(leftMargin, y), lines[line]); });
}

const bool areRegistered = [] {
    benchmark::AddCustomContext("Qt", qVersion());
    for (const Workload* workload : getWorkloads()) {
        benchmark::RegisterBenchmark(("layout/" + workload->name + "/Qt").c_str(), layOut, *workload);
    }
    for (const Workload* workload : getShapedWorkloads()) {
        benchmark::RegisterBenchmark(("shaping again/" + workload->name + "/Qt").c_str(), layOut, *workload);
    }
    for (const Scene& scene : getScenes()) {
        benchmark::RegisterBenchmark((scene.getName() + "/Qt").c_str(), draw, scene);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
