#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>

#include <ft2build.h>
#include FT_TRUETYPE_TAGS_H

namespace Vell::FontLoaders::Internal {

namespace {

constexpr std::uint64_t headerSize = 12;
constexpr std::uint64_t entrySize = 16;

/// The offset of the table directory. Empty if the file is too short to contain it.
std::optional<std::uint64_t> findDirectory(const BigEndianBytes& file) {
    const std::optional<std::uint32_t> signature = file.u32(0);
    if (signature == std::uint32_t{TTAG_ttcf}) {
        return file.u32(headerSize);
    }
    return 0;
}

} // namespace

TableRange findTable(const BigEndianBytes& file, std::uint32_t tag) {
    const std::optional<std::uint64_t> directory = findDirectory(file);
    const std::optional<unsigned int> count = directory ? file.u16(*directory + 4) : std::nullopt;
    for (unsigned int i = 0; i < count.value_or(0); ++i) {
        const std::uint64_t entry = *directory + headerSize + i * entrySize;
        const std::optional<std::uint32_t> offset = file.u32(entry + 8);
        const std::optional<std::uint32_t> length = file.u32(entry + 12);
        if (!offset || !length) {
            break;
        }
        if (file.u32(entry) == tag && file.slice(*offset, *length)) {
            return {*offset, *length};
        }
    }
    return {};
}

} // namespace Vell::FontLoaders::Internal
