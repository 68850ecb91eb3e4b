#include <support/CffFont.h>

#include <cstddef>
#include <cstdint>

namespace Vell::Testing {

namespace {

/// A list of byte strings, as a CFF font has them.
Bytes makeIndex(const std::vector<Bytes>& items) {
    ByteWriter writer;
    writer.addU16(static_cast<unsigned int>(items.size()));
    if (items.empty()) {
        return writer.getBytes();
    }
    writer.addU8(4); // bytes an offset
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

/// A number of a dictionary in five bytes, whatever its value.
void addNumber(ByteWriter& writer, std::size_t number) {
    writer.addU8(29);
    writer.addU32(static_cast<std::uint32_t>(number));
}

} // namespace

Bytes CffFont::build() const {
    const Bytes header = {1, 0, 4, 4};
    const Bytes names = makeIndex({{'F', 'u', 'z', 'z', 'e', 'd'}});
    constexpr std::size_t topDictBytes = 3 * 5 + 2;
    const Bytes strings = makeIndex({});
    const Bytes subroutines = makeIndex(globalSubroutines);
    const Bytes glyphs = makeIndex(charStrings);
    const std::size_t topIndexBytes = 3 + 2 * 4 + topDictBytes;
    const std::size_t glyphsAt =
        header.size() + names.size() + topIndexBytes + strings.size() + subroutines.size();

    ByteWriter topDict;
    addNumber(topDict, glyphsAt);
    topDict.addU8(17); // CharStrings
    addNumber(topDict, 0);
    addNumber(topDict, glyphsAt + glyphs.size());
    topDict.addU8(18); // Private: empty, at the end

    ByteWriter file;
    for (const Bytes& part : {header, names, makeIndex({topDict.getBytes()}), strings, subroutines, glyphs}) {
        file.addBytes(part);
    }
    return file.getBytes();
}

Bytes makeBoxCharString() {
    constexpr unsigned char zero = 139;
    constexpr unsigned char plus = zero + 100;
    constexpr unsigned char minus = zero - 100;
    return {plus, zero, 21, plus, plus, minus, 6, 14}; // rmoveto; hlineto: across, up, back; endchar
}

CffFont makeBusyCffFont(std::size_t glyphCount, std::size_t calls) {
    constexpr unsigned char callGlobal = 29;
    constexpr unsigned char returns = 11;
    constexpr unsigned char firstSubroutine = 139 - 107; // numbers are 139 too large, the bias is 107
    CffFont font;
    for (unsigned char i = 1; i < 10; ++i) {
        Bytes subroutine;
        for (std::size_t call = 0; call < calls; ++call) {
            subroutine.insert(subroutine.end(),
                              {static_cast<unsigned char>(firstSubroutine + i), callGlobal});
        }
        subroutine.push_back(returns);
        font.globalSubroutines.push_back(subroutine);
    }
    font.globalSubroutines.push_back({returns});
    font.charStrings.assign(glyphCount, {firstSubroutine, callGlobal, 14});
    return font;
}

} // namespace Vell::Testing
