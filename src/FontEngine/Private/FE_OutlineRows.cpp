#include <FontEngine/Private/FE_OutlineRows.h>

#include <algorithm>
#include <cstdlib>

namespace Vell::FontEngine::Internal {

namespace {

constexpr FT_Pos pixel = 64; // in 26.6
constexpr FT_Pos conicTolerance = pixel / 4;
constexpr FT_Pos cubicTolerance = pixel / 2;

FT_Pos floorToPixel(FT_Pos position) {
    return position >> 6;
}

/// Returns the number of segments into which FreeType flattens a curve. Each halving leaves a quarter of the
/// deviation.
std::int64_t countSegments(FT_Pos deviation, FT_Pos tolerance) {
    std::int64_t segments = 1;
    for (; deviation > tolerance; deviation /= 4) {
        segments *= 2;
    }
    return segments;
}

FT_Pos getLarger(FT_Pos x, FT_Pos y) {
    return std::max(std::abs(x), std::abs(y));
}

/// Walks along an outline and sums up the work of each row. Stores each row as its difference from the row
/// below.
class RowWalk {
public:
    RowWalk(FT_Pos low, std::size_t rows, Oversampling oversampling)
        : _lowestRow(floorToPixel(low * oversampling.y))
        , _oversampling(oversampling)
        , _differences(rows + 1) {}

    void moveTo(const FT_Vector& to) { _position = oversample(to); }
    void lineTo(const FT_Vector& to) { addLine(oversample(to)); }
    void conicTo(const FT_Vector& control, const FT_Vector& to);
    void cubicTo(const FT_Vector& control1, const FT_Vector& control2, const FT_Vector& to);

    std::vector<RowWork> sum() const;

private:
    FT_Vector oversample(const FT_Vector& point) const {
        return {point.x * _oversampling.x, point.y * _oversampling.y};
    }
    void addLine(const FT_Vector& to);
    void add(FT_Pos lowest, FT_Pos highest, RowWork work);

    FT_Pos _lowestRow;
    Oversampling _oversampling;
    FT_Vector _position = {0, 0};
    std::vector<RowWork> _differences;
};

void RowWalk::add(FT_Pos lowest, FT_Pos highest, RowWork work) {
    RowWork& first = _differences[static_cast<std::size_t>(floorToPixel(lowest) - _lowestRow)];
    first.entered += work.entered;
    first.walked += work.walked;
    RowWork& end = _differences[static_cast<std::size_t>(floorToPixel(highest) - _lowestRow) + 1];
    end.entered -= work.entered;
    end.walked -= work.walked;
}

void RowWalk::addLine(const FT_Vector& to) {
    const FT_Pos low = std::min(_position.y, to.y);
    const FT_Pos high = std::max(_position.y, to.y);
    const FT_Pos rows = floorToPixel(high) - floorToPixel(low);
    // FreeType enters only the last pixel of a horizontal line.
    const FT_Pos pixels = low == high ? 1 : std::abs(floorToPixel(to.x) - floorToPixel(_position.x));
    const FT_Pos inRow =
        low == high || rows == 0 ? pixels : std::min(pixels, pixels * pixel / (high - low)) + 1;
    add(low, high, {inRow, pixels + rows + 2});
    _position = to;
}

void RowWalk::conicTo(const FT_Vector& control, const FT_Vector& to) {
    const FT_Vector p0 = _position;
    const FT_Vector p1 = oversample(control);
    const FT_Vector p2 = oversample(to);
    const std::int64_t count =
        countSegments(getLarger(p0.x - 2 * p1.x + p2.x, p0.y - 2 * p1.y + p2.y), conicTolerance);
    add(std::min({p0.y, p1.y, p2.y}), std::max({p0.y, p1.y, p2.y}), {0, count});
    for (std::int64_t i = 1; i <= count; ++i) {
        const std::int64_t rest = count - i;
        const auto blend = [=](FT_Pos a, FT_Pos b, FT_Pos c) {
            return (rest * rest * a + 2 * rest * i * b + i * i * c) / (count * count);
        };
        addLine({blend(p0.x, p1.x, p2.x), blend(p0.y, p1.y, p2.y)});
    }
}

void RowWalk::cubicTo(const FT_Vector& control1, const FT_Vector& control2, const FT_Vector& to) {
    const FT_Vector p0 = _position;
    const FT_Vector p1 = oversample(control1);
    const FT_Vector p2 = oversample(control2);
    const FT_Vector p3 = oversample(to);
    const FT_Pos deviation = std::max(getLarger(2 * p0.x - 3 * p1.x + p3.x, 2 * p0.y - 3 * p1.y + p3.y),
                                      getLarger(p0.x - 3 * p2.x + 2 * p3.x, p0.y - 3 * p2.y + 2 * p3.y));
    const std::int64_t count = countSegments(deviation, cubicTolerance);
    add(std::min({p0.y, p1.y, p2.y, p3.y}), std::max({p0.y, p1.y, p2.y, p3.y}), {0, count});
    for (std::int64_t i = 1; i <= count; ++i) {
        const std::int64_t rest = count - i;
        const auto blend = [=](FT_Pos a, FT_Pos b, FT_Pos c, FT_Pos d) {
            return (rest * rest * rest * a + 3 * rest * rest * i * b + 3 * rest * i * i * c + i * i * i * d) /
                   (count * count * count);
        };
        addLine({blend(p0.x, p1.x, p2.x, p3.x), blend(p0.y, p1.y, p2.y, p3.y)});
    }
}

std::vector<RowWork> RowWalk::sum() const {
    std::vector<RowWork> rows;
    rows.reserve(_differences.size());
    RowWork row;
    for (const RowWork& difference : _differences) {
        row.entered += difference.entered;
        row.walked += difference.walked;
        rows.push_back(row);
    }
    rows.pop_back();
    return rows;
}

template <class Draw>
int draw(void* user, const Draw& draw) {
    draw(*static_cast<RowWalk*>(user));
    return FT_Err_Ok;
}

int onMove(const FT_Vector* to, void* user) {
    return draw(user, [to](RowWalk& walk) { walk.moveTo(*to); });
}

int onLine(const FT_Vector* to, void* user) {
    return draw(user, [to](RowWalk& walk) { walk.lineTo(*to); });
}

int onConic(const FT_Vector* control, const FT_Vector* to, void* user) {
    return draw(user, [=](RowWalk& walk) { walk.conicTo(*control, *to); });
}

int onCubic(const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* user) {
    return draw(user, [=](RowWalk& walk) { walk.cubicTo(*control1, *control2, *to); });
}

} // namespace

std::vector<RowWork> measureRows(const FT_Outline& outline, FT_Pos low, std::size_t rows,
                                 Oversampling oversampling) {
    static const FT_Outline_Funcs callbacks{onMove, onLine, onConic, onCubic, 0, 0};
    RowWalk walk(low, rows, oversampling);
    // Ignores an error: an outline that FreeType cannot walk to its end, it cannot render either.
    FT_Outline_Decompose(const_cast<FT_Outline*>(&outline), &callbacks, &walk);
    return walk.sum();
}

} // namespace Vell::FontEngine::Internal
