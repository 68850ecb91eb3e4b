#include <support/PictureTables.h>

#include <algorithm>
#include <cstddef>

namespace Vell::Testing {

namespace {

std::uint32_t computeCrc(const Bytes& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const unsigned char byte : bytes) {
        crc ^= byte;
        for (int bit = 0; bit != 8; ++bit) {
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~crc;
}

std::uint32_t computeAdler(const Bytes& bytes) {
    constexpr std::uint32_t modulus = 65521;
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const unsigned char byte : bytes) {
        low = (low + byte) % modulus;
        high = (high + low) % modulus;
    }
    return high << 16U | low;
}

void addChunk(ByteWriter& png, const std::string& type, const Bytes& content) {
    ByteWriter chunk;
    chunk.addText(type);
    chunk.addBytes(content);
    png.addU32(static_cast<std::uint32_t>(content.size()));
    png.addBytes(chunk.getBytes());
    png.addU32(computeCrc(chunk.getBytes()));
}

void addLittleEndian(ByteWriter& writer, std::size_t value) {
    writer.addU8(static_cast<unsigned int>(value & 0xFFU));
    writer.addU8(static_cast<unsigned int>(value >> 8U));
}

/// A zlib stream of blocks that are stored as they are.
Bytes store(const Bytes& bytes) {
    constexpr std::size_t maxBlock = 65535;
    ByteWriter stream;
    stream.addU16(0x7801);
    for (std::size_t at = 0; at < bytes.size(); at += maxBlock) {
        const std::size_t count = std::min(maxBlock, bytes.size() - at);
        stream.addU8(at + count == bytes.size() ? 1 : 0);
        addLittleEndian(stream, count);
        addLittleEndian(stream, ~count & 0xFFFFU);
        const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        stream.addBytes(Bytes(begin, begin + static_cast<std::ptrdiff_t>(count)));
    }
    stream.addU32(computeAdler(bytes));
    return stream.getBytes();
}

Bytes filterRows(const Picture& picture) {
    ByteWriter rows;
    for (std::size_t y = 0; y != picture.rows; ++y) {
        rows.addU8(0); // no filter
        for (std::size_t x = 0; x != picture.width; ++x) {
            for (const unsigned char channel : picture.pixels[y * picture.width + x]) {
                rows.addU8(channel);
            }
        }
    }
    return rows.getBytes();
}

void addSbixStrike(ByteWriter& table, const PictureStrike& strike, unsigned int glyphCount) {
    ByteWriter offsets;
    ByteWriter data;
    const std::size_t dataAt = 4 + 4 * (std::size_t{glyphCount} + 1);
    auto picture = strike.pictures.begin();
    for (unsigned int glyph = 0; glyph != glyphCount; ++glyph) {
        offsets.addU32(static_cast<std::uint32_t>(dataAt + data.size()));
        if (picture != strike.pictures.end() && picture->glyph == glyph) {
            data.addI16(picture->left);
            data.addI16(picture->top - static_cast<int>(picture->rows));
            data.addText(picture->type);
            data.addBytes(picture->file);
            ++picture;
        }
    }
    offsets.addU32(static_cast<std::uint32_t>(dataAt + data.size()));
    table.addU16(strike.ppem);
    table.addU16(72);
    table.addBytes(offsets.getBytes());
    table.addBytes(data.getBytes());
}

void addLineMetrics(ByteWriter& writer) {
    for (const unsigned int byte : {7U, 0xFFU, 8U, 1U, 0U, 0U, 0U, 0U, 7U, 0xFFU, 0U, 0U}) {
        writer.addU8(byte);
    }
}

/// The record of a strike, whose only range of glyphs is described at `at`.
void addStrikeRecord(ByteWriter& cblc, const PictureStrike& strike, std::uint32_t at, std::uint32_t bytes) {
    for (const std::uint32_t field : {at, bytes, 1U, 0U}) {
        cblc.addU32(field);
    }
    addLineMetrics(cblc);
    addLineMetrics(cblc);
    cblc.addU16(strike.pictures.front().glyph);
    cblc.addU16(strike.pictures.back().glyph);
    for (const unsigned int byte : {strike.ppem, strike.ppem, 32U, 1U}) { // bits, horizontal metrics
        cblc.addU8(byte);
    }
}

bool isUniform(const PictureStrike& strike) {
    return strike.indexFormat == 2 || strike.indexFormat == 5;
}

void addPicture(ByteWriter& cbdt, const PictureStrike& strike, const GlyphPicture& picture) {
    if (!isUniform(strike)) {
        addPictureMetrics(cbdt, picture);
    }
    cbdt.addU32(static_cast<std::uint32_t>(picture.file.size()));
    cbdt.addBytes(picture.file);
}

/// The length of each picture and the metrics of all of them.
void addUniformMetrics(ByteWriter& index, const GlyphPicture& first) {
    index.addU32(static_cast<std::uint32_t>(4 + first.file.size()));
    addPictureMetrics(index, first);
    index.addZeros(3); // vertical metrics
}

/// Adds the pictures of every glyph of the range to the data, and their offsets to the index.
void addDensePictures(const PictureStrike& strike, ByteWriter& cbdt, ByteWriter& index) {
    const std::size_t begin = cbdt.size();
    const auto addOffset = [&] {
        const auto offset = static_cast<std::uint32_t>(cbdt.size() - begin);
        strike.indexFormat == 1 ? index.addU32(offset) : index.addU16(offset);
    };
    auto picture = strike.pictures.begin();
    for (unsigned int glyph = picture->glyph; glyph <= strike.pictures.back().glyph; ++glyph) {
        addOffset();
        if (picture->glyph == glyph) {
            addPicture(cbdt, strike, *picture);
            ++picture;
        }
    }
    addOffset();
    index.padTo4();
}

/// Adds the pictures to the data, and the glyphs that have some to the index.
void addSparsePictures(const PictureStrike& strike, ByteWriter& cbdt, ByteWriter& index) {
    const std::size_t begin = cbdt.size();
    if (isUniform(strike)) {
        addUniformMetrics(index, strike.pictures.front());
    }
    if (strike.indexFormat != 2) {
        index.addU32(static_cast<std::uint32_t>(strike.pictures.size()));
    }
    for (const GlyphPicture& picture : strike.pictures) {
        if (strike.indexFormat != 2) {
            index.addU16(picture.glyph);
        }
        if (strike.indexFormat == 4) {
            index.addU16(static_cast<unsigned int>(cbdt.size() - begin));
        }
        addPicture(cbdt, strike, picture);
    }
    if (strike.indexFormat == 4) {
        index.addU16(0xFFFF);
        index.addU16(static_cast<unsigned int>(cbdt.size() - begin));
    }
    index.padTo4();
}

/// Adds the pictures of a strike to the data, and returns the index of their positions.
Bytes addPictures(const PictureStrike& strike, ByteWriter& cbdt) {
    ByteWriter index;
    index.addU16(strike.pictures.front().glyph);
    index.addU16(strike.pictures.back().glyph);
    index.addU32(8);
    index.addU16(strike.indexFormat);
    index.addU16(isUniform(strike) ? 19 : 17); // a PNG without metrics, or after small ones
    index.addU32(static_cast<std::uint32_t>(cbdt.size()));
    if (strike.indexFormat == 1 || strike.indexFormat == 3) {
        addDensePictures(strike, cbdt, index);
    } else {
        addSparsePictures(strike, cbdt, index);
    }
    return index.getBytes();
}

} // namespace

Picture makeFlatPicture(unsigned int width, unsigned int rows, const Rgba& color) {
    return {width, rows, std::vector<Rgba>(std::size_t{width} * rows, color)};
}

Picture makeMixedPicture(unsigned int width, unsigned int rows) {
    Picture picture = makeFlatPicture(width, rows, {});
    for (std::size_t i = 0; i != picture.pixels.size(); ++i) {
        const auto value = static_cast<unsigned char>(i * 37);
        const auto alpha = static_cast<unsigned char>(i % 3 == 0 ? 128 : 255);
        picture.pixels[i] = {value, static_cast<unsigned char>(255 - value),
                             static_cast<unsigned char>(i * 101), alpha};
    }
    return picture;
}

Bytes buildPng(const Picture& picture) {
    return buildMislabelledPng(picture, picture.width, picture.rows);
}

Bytes buildMislabelledPng(const Picture& picture, std::uint32_t width, std::uint32_t rows) {
    ByteWriter header;
    header.addU32(width);
    header.addU32(rows);
    for (const unsigned int byte : {8U, 6U, 0U, 0U, 0U}) { // bits, colours with alpha, no interlacing
        header.addU8(byte);
    }
    ByteWriter png;
    png.addBytes({0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'});
    addChunk(png, "IHDR", header.getBytes());
    addChunk(png, "IDAT", store(filterRows(picture)));
    addChunk(png, "IEND", {});
    return png.getBytes();
}

Bytes addPngChunk(const Bytes& png, const std::string& type, const Bytes& content) {
    constexpr std::ptrdiff_t headerEnd = 33;
    ByteWriter writer;
    writer.addBytes(Bytes(png.begin(), png.begin() + headerEnd));
    addChunk(writer, type, content);
    writer.addBytes(Bytes(png.begin() + headerEnd, png.end()));
    return writer.getBytes();
}

GlyphPicture makeGlyphPicture(unsigned int glyph, int left, int top, const Picture& picture) {
    return {glyph, left, top, picture.width, picture.rows, buildPng(picture)};
}

void addPictureMetrics(ByteWriter& writer, const GlyphPicture& picture) {
    for (const int byte : {static_cast<int>(picture.rows), static_cast<int>(picture.width), picture.left,
                           picture.top, static_cast<int>(picture.width)}) {
        writer.addU8(static_cast<unsigned int>(byte));
    }
}

Bytes buildSbix(const std::vector<PictureStrike>& strikes, unsigned int glyphCount) {
    std::vector<Bytes> parts;
    ByteWriter table;
    table.addU16(1);
    table.addU16(1);
    table.addU32(static_cast<std::uint32_t>(strikes.size()));
    std::size_t at = 8 + 4 * strikes.size();
    for (const PictureStrike& strike : strikes) {
        ByteWriter part;
        addSbixStrike(part, strike, glyphCount);
        table.addU32(static_cast<std::uint32_t>(at));
        at += part.size();
        parts.push_back(part.getBytes());
    }
    for (const Bytes& part : parts) {
        table.addBytes(part);
    }
    return table.getBytes();
}

CbdtTables buildCbdt(const std::vector<PictureStrike>& strikes) {
    constexpr std::size_t recordBytes = 48;
    ByteWriter cbdt;
    cbdt.addU32(0x00030000);
    ByteWriter cblc;
    cblc.addU32(0x00030000);
    cblc.addU32(static_cast<std::uint32_t>(strikes.size()));
    ByteWriter ranges;
    const std::size_t rangesAt = 8 + recordBytes * strikes.size();
    for (const PictureStrike& strike : strikes) {
        const auto at = static_cast<std::uint32_t>(rangesAt + ranges.size());
        const Bytes range = addPictures(strike, cbdt);
        addStrikeRecord(cblc, strike, at, static_cast<std::uint32_t>(range.size()));
        ranges.addBytes(range);
    }
    cblc.addBytes(ranges.getBytes());
    return {cblc.getBytes(), cbdt.getBytes()};
}

} // namespace Vell::Testing
