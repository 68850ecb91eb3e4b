#include <FontEngine/Color/Private/PlainPainter.h>

#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Vell::FontEngine {

using Testing::Colr::Extend;
using Testing::Colr::Line;
using Testing::Colr::PaintTable;
using Testing::Colr::Point;
using Testing::Colr::Stop;

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr PlainPixel transparent{0, 0, 0, 0};

PlainMatrix multiply(const PlainMatrix& a, const PlainMatrix& b) {
    return {a.xx * b.xx + a.xy * b.yx, a.yx * b.xx + a.yy * b.yx,        a.xx * b.xy + a.xy * b.yy,
            a.yx * b.xy + a.yy * b.yy, a.xx * b.dx + a.xy * b.dy + a.dx, a.yx * b.dx + a.yy * b.dy + a.dy};
}

Point apply(const PlainMatrix& m, const Point& p) {
    return {m.xx * p.x + m.xy * p.y + m.dx, m.yx * p.x + m.yy * p.y + m.dy};
}

/// Of a matrix that has an inverse.
Point applyInverse(const PlainMatrix& m, const Point& p) {
    const double determinant = m.xx * m.yy - m.xy * m.yx;
    const double x = p.x - m.dx;
    const double y = p.y - m.dy;
    return {(m.yy * x - m.xy * y) / determinant, (m.xx * y - m.yx * x) / determinant};
}

PlainMatrix around(const PlainMatrix& matrix, double x, double y) {
    return multiply(PlainMatrix{1, 0, 0, 1, x, y}, multiply(matrix, PlainMatrix{1, 0, 0, 1, -x, -y}));
}

PlainMatrix makeRotation(double halfTurns) {
    const double angle = halfTurns * pi;
    return {std::cos(angle), std::sin(angle), -std::sin(angle), std::cos(angle), 0, 0};
}

PlainMatrix makeSkewing(double xHalfTurns, double yHalfTurns) {
    return {1, std::tan(yHalfTurns * pi), -std::tan(xHalfTurns * pi), 1, 0, 0};
}

/// The matrix of a paint that only places another one.
PlainMatrix getPlacement(const PaintTable& paint) {
    const std::vector<double>& n = paint.numbers;
    switch (paint.format) {
    case 12: {
        const std::vector<double>& m = paint.links[1].target->numbers;
        return {m[0], m[1], m[2], m[3], m[4], m[5]};
    }
    case 14:
        return {1, 0, 0, 1, n[0], n[1]};
    case 16:
        return {n[0], 0, 0, n[1], 0, 0};
    case 18:
        return around({n[0], 0, 0, n[1], 0, 0}, n[2], n[3]);
    case 20:
        return {n[0], 0, 0, n[0], 0, 0};
    case 22:
        return around({n[0], 0, 0, n[0], 0, 0}, n[1], n[2]);
    case 24:
        return makeRotation(n[0]);
    case 26:
        return around(makeRotation(n[0]), n[1], n[2]);
    case 28:
        return makeSkewing(n[0], n[1]);
    default:
        return around(makeSkewing(n[0], n[1]), n[2], n[3]);
    }
}

/// The offset at a point, or NaN if the gradient leaves it transparent.
double findLinearOffset(const std::vector<double>& n, const Point& p) {
    const Point p0{n[0], n[1]};
    const Point p1{n[2] - p0.x, n[3] - p0.y};
    const Point p2{n[4] - p0.x, n[5] - p0.y};
    if (p1.x * p2.y == p1.y * p2.x) {
        return NAN;
    }
    // p3 is the projection of p1 on the line that is perpendicular to p0 p2.
    const Point normal{p2.y, -p2.x};
    const double part = (p1.x * normal.x + p1.y * normal.y) / (normal.x * normal.x + normal.y * normal.y);
    const Point p3{normal.x * part, normal.y * part};
    return ((p.x - p0.x) * p3.x + (p.y - p0.y) * p3.y) / (p3.x * p3.x + p3.y * p3.y);
}

double findRadialOffset(const std::vector<double>& n, const Point& p) {
    const double dx = n[3] - n[0];
    const double dy = n[4] - n[1];
    const double dr = n[5] - n[2];
    if (dx == 0 && dy == 0 && dr == 0) {
        return NAN;
    }
    // (x(t) - p.x)^2 + (y(t) - p.y)^2 = r(t)^2
    const double a = dx * dx + dy * dy - dr * dr;
    const double b = 2 * (dx * (n[0] - p.x) + dy * (n[1] - p.y) - dr * n[2]);
    const double c = (n[0] - p.x) * (n[0] - p.x) + (n[1] - p.y) * (n[1] - p.y) - n[2] * n[2];
    std::vector<double> solutions;
    if (a == 0) {
        solutions = {-c / b};
    } else {
        const double root = std::sqrt(b * b - 4 * a * c);
        solutions = {(-b + root) / (2 * a), (-b - root) / (2 * a)};
    }
    double greatest = NAN;
    for (const double t : solutions) {
        if (n[2] + t * dr >= 0 && !(t <= greatest)) {
            greatest = t;
        }
    }
    return greatest;
}

double findSweepOffset(const std::vector<double>& n, const Point& p, Extend extend) {
    const double start = (n[2] + 1) * 180;
    const double end = (n[3] + 1) * 180;
    double angle = std::atan2(p.y - n[1], p.x - n[0]) * 180 / pi;
    angle = angle < 0 ? angle + 360 : angle;
    if (start == end) {
        return extend != Extend::Pad ? NAN : angle < start ? -100 : 100;
    }
    return (angle - start) / (end - start);
}

double findOffset(const PaintTable& paint, const Point& point) {
    switch (paint.format) {
    case 4:
        return findLinearOffset(paint.numbers, point);
    case 6:
        return findRadialOffset(paint.numbers, point);
    default:
        return findSweepOffset(paint.numbers, point, paint.line.extend);
    }
}

double extendOffset(double offset, double first, double last, Extend extend) {
    const double range = last - first;
    double rest = std::fmod(offset - first, 2 * range);
    rest = rest < 0 ? rest + 2 * range : rest;
    if (rest < range) {
        return first + rest;
    }
    return extend == Extend::Repeat ? first + rest - range : last - (rest - range);
}

} // namespace

/// Where and what a paint is drawn on.
struct PlainPainter::Target {
    PlainImage& layer;
    PlainMatrix matrix;
    Coverage coverage; ///< from 0 to 1

    Target place(const PlainMatrix& placement) const {
        return {layer, multiply(matrix, placement), coverage};
    }
    Target clip(const Coverage& other) const {
        Target clipped = *this;
        for (std::size_t i = 0; i < other.size(); ++i) {
            clipped.coverage[i] *= other[i];
        }
        return clipped;
    }
};

PlainPainter::PlainPainter(FT_Face face, const Testing::Colr::ColrTable& table,
                           const std::vector<Testing::Colr::Color>& palette,
                           const Testing::Colr::Color& foreground)
    : _face(face)
    , _table(table)
    , _palette(palette)
    , _foreground(foreground) {}

void PlainPainter::paint(unsigned int glyphIndex, const PlainMatrix& matrix, PlainImage& image) {
    const auto size = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    image.pixels.assign(size, transparent);
    drawGlyph(glyphIndex, {image, matrix, Coverage(size, 1.0)});
}

void PlainPainter::drawGlyph(unsigned int glyphIndex, const Target& target) {
    const PaintTable& root = *_table.getGlyphs().at(glyphIndex);
    const auto box = _table.getClipBoxes().find(glyphIndex);
    draw(root, box == _table.getClipBoxes().end() ? target : target.clip(coverBox(target, box->second)));
}

void PlainPainter::draw(const PaintTable& paint, const Target& target) {
    switch (paint.format) {
    case 1:
        for (unsigned int i = 0; i < paint.numbers[0]; ++i) {
            draw(*_table.getLayers().at(static_cast<std::size_t>(paint.numbers[1]) + i), target);
        }
        break;
    case 2: {
        const PlainPixel color = getColor(static_cast<unsigned int>(paint.numbers[0]), paint.numbers[1]);
        fill(target, [&](const Point&) { return color; });
        break;
    }
    case 4:
    case 6:
    case 8:
        drawGradient(paint, target);
        break;
    case 10:
        draw(*paint.links[0].target,
             target.clip(coverGlyph(target, static_cast<unsigned int>(paint.numbers[0]))));
        break;
    case 11:
        drawGlyph(static_cast<unsigned int>(paint.numbers[0]), target);
        break;
    case 32:
        drawComposite(paint, target);
        break;
    default:
        draw(*paint.links[0].target, target.place(getPlacement(paint)));
        break;
    }
}

void PlainPainter::drawComposite(const PaintTable& paint, const Target& target) {
    PlainImage source = target.layer;
    std::fill(source.pixels.begin(), source.pixels.end(), transparent);
    PlainImage backdrop = source;
    const Coverage full(source.pixels.size(), 1.0);
    draw(*paint.links[0].target, {source, target.matrix, full});
    draw(*paint.links[1].target, {backdrop, target.matrix, full});
    for (std::size_t i = 0; i < full.size(); ++i) {
        PlainPixel result = compositePlainly(static_cast<unsigned int>(paint.numbers[0]), source.pixels[i],
                                             backdrop.pixels[i]);
        for (double& channel : result) {
            channel *= target.coverage[i];
        }
        PlainPixel& pixel = target.layer.pixels[i];
        pixel = compositePlainly(3, result, pixel);
    }
}

template <class GetColor>
void PlainPainter::fill(const Target& target, const GetColor& getColor) {
    std::size_t i = 0;
    for (int row = 0; row < target.layer.height; ++row) {
        for (int column = 0; column < target.layer.width; ++column, ++i) {
            const Point center{target.layer.left + column + 0.5,
                               target.layer.bottom + target.layer.height - 1 - row + 0.5};
            PlainPixel color = getColor(center);
            for (double& channel : color) {
                channel *= target.coverage[i];
            }
            target.layer.pixels[i] = compositePlainly(3, color, target.layer.pixels[i]);
        }
    }
}

void PlainPainter::drawGradient(const PaintTable& paint, const Target& target) {
    const PlainMatrix& m = target.matrix;
    if (m.xx * m.yy == m.xy * m.yx) {
        return;
    }
    fill(target, [&](const Point& center) {
        const double offset = findOffset(paint, applyInverse(m, center));
        return std::isnan(offset) ? transparent : getColor(paint.line, offset);
    });
}

PlainPixel PlainPainter::getColor(unsigned int entry, double alpha) const {
    const Testing::Colr::Color& color = entry == Testing::Colr::foreground ? _foreground : _palette.at(entry);
    const double opacity = std::round(color.a * alpha) / 255; // colours have 8 bits
    return {color.r / 255.0 * opacity, color.g / 255.0 * opacity, color.b / 255.0 * opacity, opacity};
}

PlainPixel PlainPainter::getColor(const Line& line, double offset) const {
    std::vector<Stop> stops = line.stops;
    std::stable_sort(stops.begin(), stops.end(),
                     [](const Stop& a, const Stop& b) { return a.offset < b.offset; });
    if (stops.empty()) {
        return transparent;
    }
    const double first = stops.front().offset;
    const double last = stops.back().offset;
    if (stops.size() > 1 && line.extend != Extend::Pad) {
        if (first == last) {
            return transparent;
        }
        offset = extendOffset(offset, first, last, line.extend);
    }
    const auto next =
        std::find_if(stops.begin(), stops.end(), [offset](const Stop& stop) { return stop.offset > offset; });
    if (next == stops.begin() || next == stops.end()) {
        const Stop& end = next == stops.end() ? stops.back() : stops.front();
        return getColor(end.entry, end.alpha);
    }
    const Stop& previous = *(next - 1);
    const double part = (offset - previous.offset) / (next->offset - previous.offset);
    const PlainPixel a = getColor(previous.entry, previous.alpha);
    const PlainPixel b = getColor(next->entry, next->alpha);
    // Straight colours are mixed: those of the palette, which also transparent stops have.
    const PlainPixel straightA = getColor(previous.entry, 1);
    const PlainPixel straightB = getColor(next->entry, 1);
    const double alpha = a[3] + (b[3] - a[3]) * part;
    PlainPixel mixed{0, 0, 0, alpha};
    for (std::size_t i = 0; i < 3; ++i) {
        const double from = straightA[i] / straightA[3];
        const double to = straightB[i] / straightB[3];
        mixed[i] = (from + (to - from) * part) * alpha;
    }
    return mixed;
}

PlainPainter::Coverage PlainPainter::cover(const Target& target, FT_Outline& outline) const {
    const PlainImage& image = target.layer;
    for (int i = 0; i < outline.n_points; ++i) {
        FT_Vector& point = outline.points[i];
        const Point moved =
            apply(target.matrix, {static_cast<double>(point.x), static_cast<double>(point.y)});
        point = {std::lround(moved.x * 64) - image.left * 64L,
                 std::lround(moved.y * 64) - image.bottom * 64L};
    }
    std::vector<unsigned char> bytes(target.coverage.size());
    FT_Bitmap bitmap{};
    bitmap.width = static_cast<unsigned int>(image.width);
    bitmap.rows = static_cast<unsigned int>(image.height);
    bitmap.pitch = image.width;
    bitmap.buffer = bytes.data();
    bitmap.num_grays = 256;
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    FT_Outline_Get_Bitmap(_face->glyph->library, &outline, &bitmap);
    Coverage coverage;
    coverage.reserve(bytes.size());
    for (const unsigned char byte : bytes) {
        coverage.push_back(byte / 255.0);
    }
    return coverage;
}

PlainPainter::Coverage PlainPainter::coverGlyph(const Target& target, unsigned int glyphIndex) const {
    FT_Load_Glyph(_face, glyphIndex, FT_LOAD_NO_SCALE);
    return cover(target, _face->glyph->outline);
}

PlainPainter::Coverage PlainPainter::coverBox(const Target& target, const Testing::Colr::ClipBox& box) const {
    FT_Vector points[] = {
        {box.left, box.bottom}, {box.left, box.top}, {box.right, box.top}, {box.right, box.bottom}};
    char tags[] = {FT_CURVE_TAG_ON, FT_CURVE_TAG_ON, FT_CURVE_TAG_ON, FT_CURVE_TAG_ON};
    short contours[] = {3};
    FT_Outline outline{1, 4, points, tags, contours, FT_OUTLINE_NONE};
    return cover(target, outline);
}

} // namespace Vell::FontEngine
