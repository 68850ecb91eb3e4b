#include <support/VariationTables.h>

#include <cmath>

namespace Vell::Testing::Variations {

namespace {

constexpr unsigned int ownPeak = 0x8000;
constexpr unsigned int ownEnds = 0x4000;
constexpr unsigned int ownPoints = 0x2000;

unsigned int toF2Dot14(float coordinate) {
    return static_cast<unsigned int>(std::lround(coordinate * 0x4000));
}

void addReach(ByteWriter& writer, const Region& region, float Reach::*member) {
    for (const Reach& reach : region) {
        writer.addU16(toF2Dot14(reach.*member));
    }
}

/// Numbers of points, each relative to the one before, in words.
void addPoints(ByteWriter& writer, const std::vector<unsigned int>& points) {
    writer.addU8(static_cast<unsigned int>(points.size()));
    writer.addU8(0x80U | static_cast<unsigned int>(points.size() - 1));
    unsigned int previous = 0;
    for (const unsigned int point : points) {
        writer.addU16(point - previous);
        previous = point;
    }
}

void addDeltas(ByteWriter& writer, const std::vector<int>& deltas) {
    writer.addU8(0x40U | static_cast<unsigned int>(deltas.size() - 1)); // words
    for (const int delta : deltas) {
        writer.addI16(delta);
    }
}

/// A list of regions with the bytes of what changes in each.
class TupleWriter {
public:
    void add(const Region& region, const Bytes& data) {
        _headers.addU16(static_cast<unsigned int>(data.size()));
        _headers.addU16(ownPeak | ownEnds | ownPoints);
        addReach(_headers, region, &Reach::peak);
        addReach(_headers, region, &Reach::start);
        addReach(_headers, region, &Reach::end);
        _data.addBytes(data);
        ++_count;
    }

    /// `before` is the size of what stands before the list, which its offset includes.
    Bytes finish(std::size_t before) const {
        ByteWriter writer;
        writer.addU16(_count);
        writer.addU16(static_cast<unsigned int>(before + 4 + _headers.size()));
        writer.addBytes(_headers.getBytes());
        writer.addBytes(_data.getBytes());
        return writer.getBytes();
    }

private:
    unsigned int _count = 0;
    ByteWriter _headers;
    ByteWriter _data;
};

Bytes makeGlyphEntry(const std::vector<GlyphChange>& changes) {
    if (changes.empty()) {
        return {};
    }
    TupleWriter tuples;
    for (const GlyphChange& change : changes) {
        std::vector<unsigned int> points;
        std::vector<int> x;
        std::vector<int> y;
        for (const PointChange& point : change.points) {
            points.push_back(point.point);
            x.push_back(point.x);
            y.push_back(point.y);
        }
        ByteWriter data;
        addPoints(data, points);
        addDeltas(data, x);
        addDeltas(data, y);
        tuples.add(change.region, data.getBytes());
    }
    ByteWriter writer;
    writer.addBytes(tuples.finish(0));
    writer.padTo4();
    return writer.getBytes();
}

void addRegions(ByteWriter& writer, std::size_t axisCount, const std::vector<NumberChange>& changes) {
    writer.addU16(static_cast<unsigned int>(axisCount));
    writer.addU16(static_cast<unsigned int>(changes.size()));
    for (const NumberChange& change : changes) {
        for (const Reach& reach : change.region) {
            for (const float coordinate : {reach.start, reach.peak, reach.end}) {
                writer.addU16(toF2Dot14(coordinate));
            }
        }
    }
}

/// A store of so many numbers. Each change has a region of its own.
Bytes makeStore(std::size_t axisCount, std::size_t numberCount, const std::vector<NumberChange>& changes) {
    ByteWriter regions;
    addRegions(regions, axisCount, changes);
    ByteWriter writer;
    writer.addU16(1);
    writer.addU32(12);
    writer.addU16(1);
    writer.addU32(static_cast<std::uint32_t>(12 + regions.size()));
    writer.addBytes(regions.getBytes());
    const auto regionCount = static_cast<unsigned int>(changes.size());
    writer.addU16(static_cast<unsigned int>(numberCount));
    writer.addU16(regionCount); // all of them in words
    writer.addU16(regionCount);
    for (unsigned int i = 0; i < regionCount; ++i) {
        writer.addU16(i);
    }
    for (std::size_t number = 0; number < numberCount; ++number) {
        for (const NumberChange& change : changes) {
            writer.addI16(change.number == number ? change.change : 0);
        }
    }
    return writer.getBytes();
}

} // namespace

Bytes makeFvar(const std::vector<Axis>& axes) {
    ByteWriter writer;
    writer.addU32(0x00010000);
    const auto count = static_cast<unsigned int>(axes.size());
    // offset of the axes, reserved, number and size of axes, number and size of instances
    for (const unsigned int field : {16U, 2U, count, 20U, 0U, 4 * count + 4}) {
        writer.addU16(field);
    }
    for (const Axis& axis : axes) {
        writer.addText(axis.tag);
        for (const int value : {axis.minimum, axis.defaultValue, axis.maximum}) {
            writer.addU32(static_cast<std::uint32_t>(value) << 16U);
        }
        writer.addU16(0);
        writer.addU16(2);
    }
    return writer.getBytes();
}

Bytes makeAvar(const std::vector<std::vector<std::pair<float, float>>>& maps) {
    ByteWriter writer;
    writer.addU32(0x00010000);
    writer.addU16(0);
    writer.addU16(static_cast<unsigned int>(maps.size()));
    for (const auto& map : maps) {
        writer.addU16(static_cast<unsigned int>(map.size()));
        for (const auto& [from, to] : map) {
            writer.addU16(toF2Dot14(from));
            writer.addU16(toF2Dot14(to));
        }
    }
    return writer.getBytes();
}

Bytes makeGvar(std::size_t axisCount, const std::vector<std::vector<GlyphChange>>& glyphs) {
    ByteWriter entries;
    ByteWriter offsets;
    for (const auto& changes : glyphs) {
        offsets.addU32(static_cast<std::uint32_t>(entries.size()));
        entries.addBytes(makeGlyphEntry(changes));
    }
    offsets.addU32(static_cast<std::uint32_t>(entries.size()));
    const auto begin = static_cast<std::uint32_t>(20 + offsets.size());
    ByteWriter writer;
    writer.addU32(0x00010000);
    writer.addU16(static_cast<unsigned int>(axisCount));
    writer.addU16(0); // shared tuples
    writer.addU32(begin);
    writer.addU16(static_cast<unsigned int>(glyphs.size()));
    writer.addU16(1); // long offsets
    writer.addU32(begin);
    writer.addBytes(offsets.getBytes());
    writer.addBytes(entries.getBytes());
    return writer.getBytes();
}

Bytes makeHvar(std::size_t axisCount, std::size_t glyphCount, const std::vector<NumberChange>& advances) {
    ByteWriter writer;
    writer.addU32(0x00010000);
    writer.addU32(20);
    writer.addZeros(12); // no maps: the numbers are those of the glyphs
    writer.addBytes(makeStore(axisCount, glyphCount, advances));
    return writer.getBytes();
}

Bytes makeMvar(std::size_t axisCount, const std::vector<std::string>& tags,
               const std::vector<NumberChange>& metrics) {
    ByteWriter writer;
    writer.addU32(0x00010000);
    const auto count = static_cast<unsigned int>(tags.size());
    for (const unsigned int field :
         {0U, 8U, count, 12 + 8 * count}) { // reserved, records, place of the store
        writer.addU16(field);
    }
    for (unsigned int i = 0; i < count; ++i) {
        writer.addText(tags[i]);
        writer.addU16(0);
        writer.addU16(i);
    }
    writer.addBytes(makeStore(axisCount, tags.size(), metrics));
    return writer.getBytes();
}

Bytes makeCvar(const std::vector<NumberChange>& controlValues) {
    TupleWriter tuples;
    for (const NumberChange& change : controlValues) {
        ByteWriter data;
        addPoints(data, {change.number});
        addDeltas(data, {change.change});
        tuples.add(change.region, data.getBytes());
    }
    ByteWriter writer;
    writer.addU32(0x00010000);
    writer.addBytes(tuples.finish(4));
    return writer.getBytes();
}

} // namespace Vell::Testing::Variations
