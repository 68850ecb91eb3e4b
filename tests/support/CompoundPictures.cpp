#include <support/CompoundPictures.h>

#include <cstddef>

namespace Vell::Testing {

namespace {

constexpr std::size_t rangeListAt = 56;

void addStrikeRecord(ByteWriter& cblc, unsigned int ppem, unsigned int lastGlyph) {
    for (const std::uint32_t field : {static_cast<std::uint32_t>(rangeListAt), 0U, 2U, 0U}) { // two ranges
        cblc.addU32(field);
    }
    cblc.addZeros(24); // metrics of lines
    cblc.addU16(1);
    cblc.addU16(lastGlyph);
    for (const unsigned int byte : {ppem, ppem, 32U, 1U}) { // bits, horizontal metrics
        cblc.addU8(byte);
    }
}

/// The position of each glyph of a range. `starts` also has the end of the last one.
Bytes makeIndex(unsigned int imageFormat, const std::vector<std::size_t>& starts) {
    ByteWriter index;
    index.addU16(1); // offsets of four bytes
    index.addU16(imageFormat);
    index.addU32(0); // relative to the beginning of the data
    for (const std::size_t start : starts) {
        index.addU32(static_cast<std::uint32_t>(start));
    }
    return index.getBytes();
}

void addCompound(ByteWriter& cbdt, const PictureParts& parts, const GlyphPicture& extent) {
    addPictureMetrics(cbdt, extent);
    cbdt.addU8(0);
    cbdt.addU16(static_cast<unsigned int>(parts.size()));
    for (const unsigned int part : parts) {
        cbdt.addU16(part);
        cbdt.addU16(0);
    }
}

void addRange(ByteWriter& cblc, unsigned int first, unsigned int last, std::size_t offset) {
    cblc.addU16(first);
    cblc.addU16(last);
    cblc.addU32(static_cast<std::uint32_t>(offset));
}

} // namespace

CbdtTables buildCompoundCbdt(unsigned int ppem, const std::vector<PictureParts>& compounds,
                             const GlyphPicture& last) {
    ByteWriter cbdt;
    cbdt.addU32(0x00030000);
    std::vector<std::size_t> starts;
    for (const PictureParts& parts : compounds) {
        starts.push_back(cbdt.size());
        addCompound(cbdt, parts, last);
    }
    starts.push_back(cbdt.size());
    addPictureMetrics(cbdt, last);
    cbdt.addU32(static_cast<std::uint32_t>(last.file.size()));
    cbdt.addBytes(last.file);

    const Bytes compoundIndex = makeIndex(8, starts);
    const auto count = static_cast<unsigned int>(compounds.size());
    ByteWriter cblc;
    cblc.addU32(0x00030000);
    cblc.addU32(1);
    addStrikeRecord(cblc, ppem, count + 1);
    addRange(cblc, 1, count, 16);
    addRange(cblc, count + 1, count + 1, 16 + compoundIndex.size());
    cblc.addBytes(compoundIndex);
    cblc.addBytes(makeIndex(17, {starts.back(), cbdt.size()}));
    return {cblc.getBytes(), cbdt.getBytes()};
}

} // namespace Vell::Testing
