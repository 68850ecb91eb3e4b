#include "RenamedFont.h"

#include <stdexcept>

namespace Vell::Benchmarks {

namespace {

unsigned int read16(const Bytes& bytes, std::size_t position) {
    return static_cast<unsigned int>(bytes.at(position) << 8U | bytes.at(position + 1));
}

std::size_t read32(const Bytes& bytes, std::size_t position) {
    return static_cast<std::size_t>(read16(bytes, position)) << 16U | read16(bytes, position + 2);
}

void write16(Bytes& bytes, std::size_t position, std::size_t value) {
    bytes.at(position) = static_cast<unsigned char>(value >> 8U);
    bytes.at(position + 1) = static_cast<unsigned char>(value & 0xFFU);
}

std::size_t findNameTable(const Bytes& font) {
    const unsigned int tableCount = read16(font, 4);
    for (std::size_t i = 0; i < tableCount; ++i) {
        constexpr std::size_t nameTag = 0x6E616D65;
        const std::size_t record = 12 + 16 * i;
        if (read32(font, record) == nameTag) {
            return read32(font, record + 8);
        }
    }
    throw std::runtime_error("the font has no name table");
}

/// Overwrites the string of a name record.
void rename(Bytes& font, std::size_t record, std::size_t strings, const std::string& text) {
    constexpr unsigned int macintosh = 1; // one byte per character; other platforms have two
    const std::size_t width = read16(font, record) == macintosh ? 1 : 2;
    if (read16(font, record + 8) < width * text.size()) {
        throw std::runtime_error("the name of the font is shorter than '" + text + "'");
    }
    write16(font, record + 8, width * text.size());
    std::size_t position = strings + read16(font, record + 10);
    for (const char character : text) {
        if (width == 2) {
            font.at(position++) = 0;
        }
        font.at(position++) = static_cast<unsigned char>(character);
    }
}

} // namespace

FontLoaders::FontBytes renameFamily(const Bytes& font, const std::string& family) {
    auto renamed = std::make_shared<Bytes>(font);
    const std::size_t table = findNameTable(font);
    const std::size_t strings = table + read16(font, table + 4);
    const unsigned int recordCount = read16(font, table + 2);
    for (std::size_t i = 0; i < recordCount; ++i) {
        constexpr unsigned int familyName = 1;
        constexpr unsigned int typographicFamilyName = 16;
        const std::size_t record = table + 6 + 12 * i;
        const unsigned int kind = read16(font, record + 6);
        if (kind == familyName || kind == typographicFamilyName) {
            rename(*renamed, record, strings, family);
        }
    }
    return renamed;
}

} // namespace Vell::Benchmarks
