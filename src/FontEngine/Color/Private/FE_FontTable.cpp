#include <FontEngine/Color/Private/FE_FontTable.h>

#include FT_TRUETYPE_TABLES_H

namespace Vell::FontEngine::Internal {

FontTable::FontTable(FT_Face face, FT_ULong tag)
    : _face(face)
    , _tag(tag) {
    if (FT_Load_Sfnt_Table(face, tag, 0, nullptr, &_size) != FT_Err_Ok) {
        _size = 0;
    }
}

std::optional<TableFields> FontTable::read(std::size_t offset, std::size_t size) const {
    TableFields fields;
    FT_ULong length = size;
    if (size > TableFields::maxSize || offset > _size || size > _size - offset ||
        FT_Load_Sfnt_Table(_face, _tag, static_cast<FT_Long>(offset), fields._bytes.data(), &length) !=
            FT_Err_Ok) {
        return std::nullopt;
    }
    fields._size = size;
    return fields;
}

} // namespace Vell::FontEngine::Internal
