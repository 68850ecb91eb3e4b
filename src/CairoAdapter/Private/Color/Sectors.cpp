#include <CairoAdapter/Private/Color/Sectors.h>

#include <algorithm>
#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

/// In one turn. More of them would be thinner than a pixel at 650 pixels from the centre.
constexpr double maxSectors = 4096.0;

StraightColor toStraight(const FontEngine::PaintColor& color) {
    constexpr double max = 255.0;
    return {color.r / max, color.g / max, color.b / max, color.a / max};
}

/// The sectors between the stops: one period of the gradient.
std::vector<Sector> listPeriod(const FontEngine::SweepGradient& gradient) {
    const std::vector<FontEngine::ColorStop>& stops = gradient.line.stops;
    const double start = gradient.startAngle;
    const double sweep = static_cast<double>(gradient.endAngle) - start;
    const auto getAngle = [=](const FontEngine::ColorStop& stop) {
        return start + static_cast<double>(stop.offset) * sweep;
    };
    std::vector<Sector> sectors;
    for (std::size_t i = 1; i < stops.size(); ++i) {
        sectors.push_back({getAngle(stops[i - 1]), getAngle(stops[i]), toStraight(stops[i - 1].color),
                           toStraight(stops[i].color)});
    }
    if (sweep < 0.0) {
        std::reverse(sectors.begin(), sectors.end());
        for (Sector& sector : sectors) {
            sector = {sector.to, sector.from, sector.toColor, sector.fromColor};
        }
    }
    return sectors;
}

/// Appends the part of the sector that lies within the turn, unless it is empty.
void append(std::vector<Sector>& sectors, const Sector& sector) {
    const double from = std::max(sector.from, 0.0);
    const double to = std::min(sector.to, wholeTurn);
    if (from < to) {
        const auto getColor = [&sector](double angle) {
            return mix(sector.fromColor, sector.toColor, (angle - sector.from) / (sector.to - sector.from));
        };
        sectors.push_back({from, to, from == sector.from ? sector.fromColor : getColor(from),
                           to == sector.to ? sector.toColor : getColor(to)});
    }
}

/// Continues the period with its first and its last colour.
std::vector<Sector> pad(const std::vector<Sector>& period) {
    const Sector& first = period.front();
    const Sector& last = period.back();
    std::vector<Sector> sectors;
    append(sectors, {std::min(first.from, 0.0), first.from, first.fromColor, first.fromColor});
    for (const Sector& sector : period) {
        append(sectors, sector);
    }
    append(sectors, {last.to, std::max(last.to, wholeTurn), last.toColor, last.toColor});
    return sectors;
}

double getLength(const std::vector<Sector>& period) {
    return period.back().to - period.front().from;
}

/// The period backwards, in the same place.
std::vector<Sector> reflect(const std::vector<Sector>& period) {
    const double ends = period.front().from + period.back().to;
    std::vector<Sector> reflected(period.size());
    std::transform(period.rbegin(), period.rend(), reflected.begin(), [ends](const Sector& sector) {
        return Sector{ends - sector.to, ends - sector.from, sector.toColor, sector.fromColor};
    });
    return reflected;
}

/// Puts `even` and `odd`, which are equally long, next to each other in turn.
std::vector<Sector> repeat(const std::vector<Sector>& even, const std::vector<Sector>& odd) {
    const double begin = even.front().from;
    const double length = getLength(even);
    std::vector<Sector> sectors;
    for (double i = std::floor(-begin / length); begin + i * length < wholeTurn; ++i) {
        const double shift = i * length;
        for (const Sector& sector : std::fmod(i, 2.0) == 0.0 ? even : odd) {
            append(sectors, {sector.from + shift, sector.to + shift, sector.fromColor, sector.toColor});
        }
    }
    return sectors;
}

Sector average(const std::vector<Sector>& period) {
    StraightColor sum{0.0, 0.0, 0.0, 0.0};
    for (const Sector& sector : period) {
        const StraightColor color = mix(sector.fromColor, sector.toColor, 0.5);
        const double share = (sector.to - sector.from) / getLength(period);
        sum = {sum.red + color.red * share, sum.green + color.green * share, sum.blue + color.blue * share,
               sum.alpha + color.alpha * share};
    }
    return {0.0, wholeTurn, sum, sum};
}

} // namespace

StraightColor mix(const StraightColor& from, const StraightColor& to, double share) {
    const auto mixChannel = [share](double a, double b) { return a + (b - a) * share; };
    return {mixChannel(from.red, to.red), mixChannel(from.green, to.green), mixChannel(from.blue, to.blue),
            mixChannel(from.alpha, to.alpha)};
}

std::vector<Sector> listSectors(const FontEngine::SweepGradient& gradient) {
    const FontEngine::GradientExtend extend = gradient.line.extend;
    const std::vector<Sector> period = listPeriod(gradient);
    if (extend == FontEngine::GradientExtend::Pad) {
        return pad(period);
    }
    if (wholeTurn / getLength(period) * static_cast<double>(period.size()) > maxSectors) {
        return {average(period)};
    }
    return repeat(period, extend == FontEngine::GradientExtend::Reflect ? reflect(period) : period);
}

} // namespace Vell::CairoAdapter::Internal
