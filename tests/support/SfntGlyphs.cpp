#include <support/SfntTables.h>

#include <algorithm>

namespace Vell::Testing::Sfnt {

namespace {

void extend(Box& box, const Box& added, bool isFirst) {
    if (isFirst) {
        box = added;
        return;
    }
    box.left = std::min(box.left, added.left);
    box.bottom = std::min(box.bottom, added.bottom);
    box.right = std::max(box.right, added.right);
    box.top = std::max(box.top, added.top);
}

void addCoordinates(ByteWriter& writer, const FontOutline& outline, int FontPoint::*coordinate) {
    int previous = 0;
    for (const FontContour& contour : outline) {
        for (const FontPoint& point : contour) {
            writer.addI16(point.*coordinate - previous);
            previous = point.*coordinate;
        }
    }
}

void addContourEnds(ByteWriter& writer, const FontOutline& outline) {
    std::size_t pointCount = 0;
    for (const FontContour& contour : outline) {
        pointCount += contour.size();
        writer.addU16(static_cast<unsigned int>(pointCount - 1));
    }
}

void addFlags(ByteWriter& writer, const FontOutline& outline) {
    for (const FontContour& contour : outline) {
        for (const FontPoint& point : contour) {
            writer.addU8(point.isOnCurve ? 1 : 0); // no other flag: each coordinate has two bytes
        }
    }
}

void addProgram(ByteWriter& writer, const Bytes& instructions) {
    writer.addU16(static_cast<unsigned int>(instructions.size()));
    writer.addBytes(instructions);
}

void addComposite(ByteWriter& writer, const FontGlyph& glyph) {
    constexpr unsigned int offsetsAreWords = 0x0001;
    constexpr unsigned int offsetsAreDistances = 0x0002;
    constexpr unsigned int moreFollow = 0x0020;
    constexpr unsigned int programFollows = 0x0100;
    const std::vector<FontComponent>& components = glyph.components;
    const bool hasProgram = !glyph.instructions.empty();
    writer.addI16(-1);
    writer.addZeros(8); // the box
    for (std::size_t i = 0; i < components.size(); ++i) {
        const bool isLast = i + 1 == components.size();
        writer.addU16(offsetsAreWords | offsetsAreDistances |
                      (isLast ? (hasProgram ? programFollows : 0) : moreFollow));
        writer.addU16(components[i].glyphIndex);
        writer.addI16(components[i].x);
        writer.addI16(components[i].y);
    }
    if (hasProgram) {
        addProgram(writer, glyph.instructions);
    }
    writer.padTo4();
}

void addGlyph(ByteWriter& writer, const FontGlyph& glyph) {
    if (!glyph.components.empty()) {
        addComposite(writer, glyph);
        return;
    }
    if (glyph.outline.empty()) {
        return;
    }
    const Box box = getBounds(glyph.outline);
    writer.addU16(static_cast<unsigned int>(glyph.outline.size()));
    for (const int edge : {box.left, box.bottom, box.right, box.top}) {
        writer.addI16(edge);
    }
    addContourEnds(writer, glyph.outline);
    addProgram(writer, glyph.instructions);
    addFlags(writer, glyph.outline);
    addCoordinates(writer, glyph.outline, &FontPoint::x);
    addCoordinates(writer, glyph.outline, &FontPoint::y);
    writer.padTo4();
}

} // namespace

Box getBounds(const FontOutline& outline) {
    Box box;
    bool isFirst = true;
    for (const FontContour& contour : outline) {
        for (const FontPoint& point : contour) {
            extend(box, {point.x, point.y, point.x, point.y}, isFirst);
            isFirst = false;
        }
    }
    return box;
}

Box getBounds(const std::vector<FontGlyph>& glyphs) {
    Box box;
    bool isFirst = true;
    for (const FontGlyph& glyph : glyphs) {
        if (!glyph.outline.empty()) {
            extend(box, getBounds(glyph.outline), isFirst);
            isFirst = false;
        }
    }
    return box;
}

GlyphTables makeGlyphTables(const std::vector<FontGlyph>& glyphs) {
    ByteWriter glyf;
    ByteWriter loca;
    for (const FontGlyph& glyph : glyphs) {
        loca.addU32(static_cast<std::uint32_t>(glyf.size()));
        addGlyph(glyf, glyph);
    }
    loca.addU32(static_cast<std::uint32_t>(glyf.size()));
    if (glyf.size() == 0) {
        glyf.addZeros(4); // readers treat an empty table as a missing one
    }
    return {glyf.getBytes(), loca.getBytes()};
}

} // namespace Vell::Testing::Sfnt
