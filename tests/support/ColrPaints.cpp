#include <support/ColrTable.h>

#include <cmath>

namespace Vell::Testing::Colr {

namespace {

double roundTo(double value, double scale) {
    return std::round(value * scale) / scale;
}

constexpr double f2dot14Scale = 0x4000;
constexpr double fixedScale = 0x10000;

/// Writes the fields of a paint table in their order.
class PaintWriter {
public:
    explicit PaintWriter(unsigned int format) {
        _table.format = format;
        _table.bytes.addU8(format);
    }

    PaintWriter& link(const Paint& target) {
        _table.links.push_back({_table.bytes.size(), target});
        _table.bytes.addZeros(3);
        return *this;
    }
    PaintWriter& u8(unsigned int value) {
        _table.bytes.addU8(value);
        return keep(value);
    }
    PaintWriter& u16(unsigned int value) {
        _table.bytes.addU16(value);
        return keep(value);
    }
    PaintWriter& u32(std::uint32_t value) {
        _table.bytes.addU32(value);
        return keep(value);
    }
    PaintWriter& units(double value) {
        _table.bytes.addI16(static_cast<int>(std::lround(value)));
        return keep(std::round(value));
    }
    PaintWriter& units(Point point) { return units(point.x).units(point.y); }
    PaintWriter& f2dot14(double value) {
        _table.bytes.addI16(static_cast<int>(std::lround(value * f2dot14Scale)));
        return keep(roundTo(value, f2dot14Scale));
    }
    PaintWriter& fixed(double value) {
        _table.bytes.addU32(static_cast<std::uint32_t>(std::lround(value * fixedScale)));
        return keep(roundTo(value, fixedScale));
    }
    PaintWriter& line(const Line& line);

    Paint finish() { return std::make_shared<const PaintTable>(std::move(_table)); }

private:
    PaintWriter& keep(double number) {
        _table.numbers.push_back(number);
        return *this;
    }

    PaintTable _table;
};

/// A colour line is linked like a paint; its first byte is the way in which it is extended.
PaintWriter& PaintWriter::line(const Line& line) {
    PaintWriter writer(static_cast<unsigned int>(line.extend));
    writer.u16(static_cast<unsigned int>(line.stops.size()));
    _table.line.extend = line.extend;
    for (const Stop& stop : line.stops) {
        writer.f2dot14(stop.offset).u16(stop.entry).f2dot14(stop.alpha);
        _table.line.stops.push_back(
            {roundTo(stop.offset, f2dot14Scale), stop.entry, roundTo(stop.alpha, f2dot14Scale)});
    }
    return link(writer.finish());
}

/// In half turns.
double toFile(double angle) {
    return angle / 180;
}

} // namespace

Paint makeLayers(unsigned int count, unsigned int first) {
    return PaintWriter(1).u8(count).u32(first).finish();
}

Paint makeSolid(unsigned int entry, double alpha) {
    return PaintWriter(2).u16(entry).f2dot14(alpha).finish();
}

Paint makeLinear(const Line& line, Point p0, Point p1, Point p2) {
    return PaintWriter(4).line(line).units(p0).units(p1).units(p2).finish();
}

Paint makeRadial(const Line& line, Point center0, double radius0, Point center1, double radius1) {
    return PaintWriter(6).line(line).units(center0).units(radius0).units(center1).units(radius1).finish();
}

Paint makeSweep(const Line& line, Point center, double startAngle, double endAngle) {
    // The format stores these angles less half a turn.
    return PaintWriter(8)
        .line(line)
        .units(center)
        .f2dot14(toFile(startAngle) - 1)
        .f2dot14(toFile(endAngle) - 1)
        .finish();
}

Paint makeGlyph(unsigned int glyphIndex, const Paint& fill) {
    return PaintWriter(10).link(fill).u16(glyphIndex).finish();
}

Paint makeColrGlyph(unsigned int glyphIndex) {
    return PaintWriter(11).u16(glyphIndex).finish();
}

Paint makeTransform(const Affine& affine, const Paint& paint) {
    PaintWriter matrix(0);
    for (const double entry : {affine.xx, affine.yx, affine.xy, affine.yy, affine.dx, affine.dy}) {
        matrix.fixed(entry);
    }
    // The matrix has no format before its entries.
    PaintTable table = *matrix.finish();
    const Bytes& bytes = table.bytes.getBytes();
    ByteWriter entries;
    entries.addBytes(Bytes(bytes.begin() + 1, bytes.end()));
    table.bytes = entries;
    return PaintWriter(12).link(paint).link(std::make_shared<const PaintTable>(table)).finish();
}

Paint makeTranslate(double x, double y, const Paint& paint) {
    return PaintWriter(14).link(paint).units(x).units(y).finish();
}

Paint makeScale(double x, double y, const Paint& paint) {
    return PaintWriter(16).link(paint).f2dot14(x).f2dot14(y).finish();
}

Paint makeScaleAround(double x, double y, Point center, const Paint& paint) {
    return PaintWriter(18).link(paint).f2dot14(x).f2dot14(y).units(center).finish();
}

Paint makeUniformScale(double factor, const Paint& paint) {
    return PaintWriter(20).link(paint).f2dot14(factor).finish();
}

Paint makeUniformScaleAround(double factor, Point center, const Paint& paint) {
    return PaintWriter(22).link(paint).f2dot14(factor).units(center).finish();
}

Paint makeRotate(double angle, const Paint& paint) {
    return PaintWriter(24).link(paint).f2dot14(toFile(angle)).finish();
}

Paint makeRotateAround(double angle, Point center, const Paint& paint) {
    return PaintWriter(26).link(paint).f2dot14(toFile(angle)).units(center).finish();
}

Paint makeSkew(double x, double y, const Paint& paint) {
    return PaintWriter(28).link(paint).f2dot14(toFile(x)).f2dot14(toFile(y)).finish();
}

Paint makeSkewAround(double x, double y, Point center, const Paint& paint) {
    return PaintWriter(30).link(paint).f2dot14(toFile(x)).f2dot14(toFile(y)).units(center).finish();
}

Paint makeComposite(const Paint& source, unsigned int mode, const Paint& backdrop) {
    return PaintWriter(32).link(source).u8(mode).link(backdrop).finish();
}

Paint makeRaw(const Bytes& bytes) {
    PaintTable table;
    table.bytes.addBytes(bytes);
    return std::make_shared<const PaintTable>(std::move(table));
}

} // namespace Vell::Testing::Colr
