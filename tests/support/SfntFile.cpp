#include <support/SfntTables.h>

namespace Vell::Testing::Sfnt {

namespace {

constexpr std::size_t adjustmentInHead = 8;
constexpr std::uint32_t wholeFileSum = 0xB1B0AFBA; // the sum of all words of a font file

std::uint32_t sumWords(const Bytes& bytes, std::size_t begin = 0) {
    std::uint32_t sum = 0;
    for (std::size_t i = begin; i < bytes.size(); ++i) {
        sum += static_cast<std::uint32_t>(bytes[i]) << (24 - 8 * ((i - begin) % 4));
    }
    return sum;
}

std::size_t getPaddedSize(const Bytes& bytes) {
    return (bytes.size() + 3) / 4 * 4;
}

std::size_t getDirectorySize(const Tables& tables) {
    return 12 + 16 * tables.size();
}

void addDirectoryHeader(ByteWriter& writer, const Tables& tables) {
    const auto count = static_cast<unsigned int>(tables.size());
    unsigned int power = 1;
    unsigned int selector = 0;
    while (power * 2 <= count) {
        power *= 2;
        ++selector;
    }
    writer.addU32(0x00010000);
    for (const unsigned int field : {count, 16 * power, selector, 16 * (count - power)}) {
        writer.addU16(field);
    }
}

/// Appends one font: its directory, then its tables at offsets from the start of the file.
void addFont(ByteWriter& writer, const Tables& tables) {
    std::size_t offset = writer.size() + getDirectorySize(tables);
    addDirectoryHeader(writer, tables);
    for (const auto& [tag, content] : tables) {
        writer.addText(tag);
        writer.addU32(sumWords(content));
        writer.addU32(static_cast<std::uint32_t>(offset));
        writer.addU32(static_cast<std::uint32_t>(content.size()));
        offset += getPaddedSize(content);
    }
    for (const auto& [tag, content] : tables) {
        writer.addBytes(content);
        writer.padTo4();
    }
}

std::size_t findTable(const Tables& tables, const std::string& wanted) {
    std::size_t offset = getDirectorySize(tables);
    for (const auto& [tag, content] : tables) {
        if (tag == wanted) {
            break;
        }
        offset += getPaddedSize(content);
    }
    return offset;
}

/// Writes the checksum of the font that begins at `begin` and ends with the file so far.
void setAdjustment(ByteWriter& writer, std::size_t begin, const Tables& tables) {
    if (tables.count("head") != 0) {
        const std::size_t head = begin + findTable(tables, "head");
        writer.setU32(head + adjustmentInHead, wholeFileSum - sumWords(writer.getBytes(), begin));
    }
}

} // namespace

Bytes makeFile(const Tables& tables) {
    ByteWriter writer;
    addFont(writer, tables);
    setAdjustment(writer, 0, tables);
    return writer.getBytes();
}

Bytes makeCollection(const std::vector<Tables>& fonts) {
    constexpr std::size_t firstOffset = 12;
    ByteWriter writer;
    writer.addText("ttcf");
    writer.addU32(0x00010000);
    writer.addU32(static_cast<std::uint32_t>(fonts.size()));
    writer.addZeros(4 * fonts.size());
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        const std::size_t begin = writer.size();
        writer.setU32(firstOffset + 4 * i, static_cast<std::uint32_t>(begin));
        addFont(writer, fonts[i]);
        setAdjustment(writer, begin, fonts[i]);
    }
    return writer.getBytes();
}

} // namespace Vell::Testing::Sfnt
