#pragma once

#include <FontLoaders/Private/FreeTypeBounds/SfntTables.h>
#include <FontLoaders/Private/Variations/AxisValues.h>

#include <hb-ot.h>

#include <cstddef>
#include <memory>
#include <vector>

/// What changes the tables of an instance after HarfBuzz has made it.
namespace Vell::FontLoaders::Internal {

struct FontDeleter {
    void operator()(hb_font_t* font) const { hb_font_destroy(font); }
};
using FontPtr = std::unique_ptr<hb_font_t, FontDeleter>;

/// The variable font, moved to these values.
FontPtr makeVariedFont(hb_face_t* face, const AxisValues& values);

using Table = std::vector<char>;

/// Empty if the font lacks the table.
Table readTable(hb_face_t* face, hb_tag_t tag);

inline BigEndianBytes viewBytes(const Table& table) {
    return {reinterpret_cast<const unsigned char*>(table.data()), table.size()};
}

/// Replaces a table of a face that HarfBuzz is building. Does nothing if the new one is empty.
void setTable(hb_face_t* instance, hb_tag_t tag, const Table& table);

/// Where a table has a number of 16 bits.
struct Field {
    std::size_t offset;
    bool isSigned;
};

/// Adds to a field, within the range of its type. Leaves a table that is too short to have the field.
void addToField(Table& table, const Field& field, float change);

} // namespace Vell::FontLoaders::Internal
