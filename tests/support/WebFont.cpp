#include <support/WebFont.h>

#include <stdexcept>
#include <utility>

namespace Vell::Testing {

namespace {

std::uint32_t toU32(std::size_t value) {
    return static_cast<std::uint32_t>(value);
}

std::size_t pad(std::size_t size) {
    return (size + 3) / 4 * 4;
}

std::size_t getUnpackedSize(const std::map<std::string, Bytes>& tables) {
    std::size_t size = 12 + 16 * tables.size();
    for (const auto& [tag, content] : tables) {
        size += pad(content.size());
    }
    return size;
}

/// Writes seven bits per byte, the most significant first. All bytes but the last have the eighth bit set.
void addBase128(ByteWriter& writer, std::size_t value) {
    int shift = 0;
    while (value >> (shift + 7) != 0) {
        shift += 7;
    }
    for (; shift > 0; shift -= 7) {
        writer.addU8(0x80U | (value >> shift & 0x7FU));
    }
    writer.addU8(value & 0x7FU);
}

/// A Brotli stream of one uncompressed block and the empty last block.
Bytes packAsBrotli(const Bytes& content) {
    constexpr std::size_t maxBlock = 0x10000;
    if (content.empty() || content.size() > maxBlock) {
        throw std::invalid_argument("not the size of a Brotli block");
    }
    // From the lowest bit: a window of 16 bits (0), not the last block (0), 4 digits of length (00), the
    // length minus one, uncompressed (1).
    const std::size_t header = (content.size() - 1) << 4U | std::size_t(1) << 20U;
    ByteWriter writer;
    for (unsigned int shift = 0; shift < 24; shift += 8) {
        writer.addU8(header >> shift & 0xFFU);
    }
    writer.addBytes(content);
    writer.addU8(3); // last, and empty
    return writer.getBytes();
}

/// Writes the header that both versions share, up to the size of the unpacked font. The length of the file is
/// set at the end.
ByteWriter beginFile(const char* signature, const WebFont& font) {
    ByteWriter writer;
    writer.addText(signature);
    writer.addU32(font.flavor);
    writer.addU32(0);
    writer.addU16(static_cast<unsigned int>(font.tables.size()));
    writer.addU16(0);
    writer.addU32(toU32(getUnpackedSize(font.tables)));
    return writer;
}

void addZeroMetadata(ByteWriter& writer) {
    writer.addZeros(24); // version, metadata, private data
}

Bytes endFile(ByteWriter writer) {
    writer.setU32(8, toU32(writer.size()));
    return writer.getBytes();
}

bool isOfGlyphs(const std::string& tag) {
    return tag == "glyf" || tag == "loca";
}

/// Writes the directory with full tags.
void addWoff2Directory(ByteWriter& writer, const WebFont& font) {
    constexpr unsigned int tagFollows = 0x3F;
    constexpr unsigned int isNotTransformed = 0xC0; // of glyf and loca; 0 for other tables
    for (const auto& [tag, content] : font.tables) {
        const auto transformed = font.transformed.find(tag);
        const bool isTransformed = transformed != font.transformed.end();
        writer.addU8(isOfGlyphs(tag) && !isTransformed ? tagFollows | isNotTransformed : tagFollows);
        writer.addText(tag);
        addBase128(writer, content.size());
        if (isTransformed) {
            addBase128(writer, transformed->second.size());
        }
    }
}

Bytes joinTables(const WebFont& font) {
    ByteWriter writer;
    for (const auto& [tag, content] : font.tables) {
        const auto transformed = font.transformed.find(tag);
        writer.addBytes(transformed != font.transformed.end() ? transformed->second : content);
    }
    return writer.getBytes();
}

} // namespace

Bytes WebFont::buildWoff() const {
    ByteWriter writer = beginFile("wOFF", *this);
    addZeroMetadata(writer);
    std::size_t offset = writer.size() + 20 * tables.size();
    for (const auto& [tag, content] : tables) {
        writer.addText(tag);
        writer.addU32(toU32(offset));
        writer.addU32(toU32(content.size())); // packed
        writer.addU32(toU32(content.size()));
        writer.addU32(0); // checksum
        offset += pad(content.size());
    }
    for (const auto& [tag, content] : tables) {
        writer.addBytes(content);
        writer.padTo4();
    }
    return endFile(std::move(writer));
}

Bytes WebFont::buildWoff2() const {
    const Bytes packed = packAsBrotli(joinTables(*this));
    ByteWriter writer = beginFile("wOF2", *this);
    writer.addU32(toU32(packed.size()));
    addZeroMetadata(writer);
    addWoff2Directory(writer, *this);
    writer.addBytes(packed);
    writer.padTo4();
    return endFile(std::move(writer));
}

} // namespace Vell::Testing
