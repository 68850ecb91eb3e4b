#include <FontEngine/Private/FE_FontTable.h>

#include <FontEngine/Private/FE_CallErrors.h>

#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <utility>

namespace Vell::FontEngine::Internal {

namespace {

constexpr std::size_t pageSize = 4096;

} // namespace

FontTable::FontTable(FT_Face face, FT_ULong tag)
    : _face(face)
    , _tag(tag) {
    if (!isCallDone(FT_Load_Sfnt_Table(face, tag, 0, nullptr, &_size), "FT_Load_Sfnt_Table")) {
        _size = 0;
    }
}

const FontTable::Page& FontTable::getPage(std::size_t index) const {
    const auto [entry, isNew] = _pages.try_emplace(index);
    if (isNew) {
        const std::size_t offset = index * pageSize;
        FT_ULong length = std::min<std::size_t>(pageSize + TableFields::maxSize, _size - offset);
        Page page(length);
        if (isCallDone(FT_Load_Sfnt_Table(_face, _tag, static_cast<FT_Long>(offset), page.data(), &length),
                       "FT_Load_Sfnt_Table")) {
            entry->second = std::move(page);
        }
    }
    return entry->second;
}

std::optional<TableFields> FontTable::read(std::size_t offset, std::size_t size) const {
    if (size > TableFields::maxSize || offset >= _size || size > _size - offset) {
        return std::nullopt;
    }
    // Pages overlap, so that the bytes are all in one.
    const Page& page = getPage(offset / pageSize);
    const std::size_t position = offset % pageSize;
    if (position + size > page.size()) {
        return std::nullopt;
    }
    TableFields fields;
    std::copy_n(page.data() + position, size, fields._bytes.data());
    fields._size = size;
    return fields;
}

} // namespace Vell::FontEngine::Internal
