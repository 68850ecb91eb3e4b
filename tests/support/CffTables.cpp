#include <support/CffTables.h>

#include <cstdint>

namespace Vell::Testing::Cff {

namespace {

void addCount(ByteWriter& writer, Version version, std::size_t count) {
    if (version == Version::One) {
        writer.addU16(static_cast<unsigned int>(count));
    } else {
        writer.addU32(static_cast<std::uint32_t>(count));
    }
}

} // namespace

Bytes makeIndex(Version version, const std::vector<Bytes>& items) {
    ByteWriter writer;
    addCount(writer, version, items.size());
    if (items.empty()) {
        return writer.getBytes();
    }
    writer.addU8(4); // bytes per offset
    std::uint32_t offset = 1;
    writer.addU32(offset);
    for (const Bytes& item : items) {
        offset += static_cast<std::uint32_t>(item.size());
        writer.addU32(offset);
    }
    for (const Bytes& item : items) {
        writer.addBytes(item);
    }
    return writer.getBytes();
}

void addNumber(ByteWriter& writer, std::size_t number) {
    writer.addU8(29);
    writer.addU32(static_cast<std::uint32_t>(number));
}

} // namespace Vell::Testing::Cff
