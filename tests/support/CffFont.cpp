#include <support/CffFont.h>

#include <support/CffTables.h>

#include <cstddef>

namespace Vell::Testing {

namespace {

Bytes makeIndex(const std::vector<Bytes>& items) {
    return Cff::makeIndex(Cff::Version::One, items);
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
    Cff::addNumber(topDict, glyphsAt);
    topDict.addU8(17); // CharStrings
    Cff::addNumber(topDict, 0);
    Cff::addNumber(topDict, glyphsAt + glyphs.size());
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
    constexpr unsigned char firstSubroutine = 139 - 107; // encoded as the number + 139; the bias is 107
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
