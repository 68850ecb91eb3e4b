#pragma once

#include <FontLoaders/Public/FreeType.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace Vell::FontEngine::Internal {

/// Some bytes of a font table, as numbers one after the other. Reading more than there is gives zeros.
class TableFields {
public:
    static constexpr std::size_t maxSize = 34;

    std::uint32_t u8() { return _position < _size ? _bytes[_position++] : 0U; }
    std::uint32_t u16() {
        const std::uint32_t high = u8();
        return high << 8U | u8();
    }
    std::uint32_t u24() {
        const std::uint32_t high = u8();
        return high << 16U | u16();
    }
    std::uint32_t u32() {
        const std::uint32_t high = u16();
        return high << 16U | u16();
    }
    int i16() { return static_cast<std::int16_t>(u16()); }
    double f2dot14() { return i16() / 16384.0; }
    double fixed() { return static_cast<std::int32_t>(u32()) / 65536.0; }

private:
    friend class FontTable;
    std::array<unsigned char, maxSize> _bytes;
    std::size_t _size = 0;
    std::size_t _position = 0;
};

/// A table of a font file. Reads it in pages, because FreeType searches the directory of the file, however
/// long, for each piece.
class FontTable {
public:
    /// A table that the font lacks has no bytes.
    FontTable(FT_Face face, FT_ULong tag);

    std::size_t getSize() const { return _size; }
    /// Returns `size` bytes, at most TableFields::maxSize, or nothing if they are not all in the table.
    std::optional<TableFields> read(std::size_t offset, std::size_t size) const;

private:
    using Page = std::vector<unsigned char>;

    const Page& getPage(std::size_t index) const;

    FT_Face _face;
    FT_ULong _tag;
    FT_ULong _size = 0;
    mutable std::map<std::size_t, Page> _pages;
};

} // namespace Vell::FontEngine::Internal
