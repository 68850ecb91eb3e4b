#include <FontLoaders/Private/Variations/InstanceTables.h>

#include <FontLoaders/Private/HarfBuzz.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace Vell::FontLoaders::Internal {

FontPtr makeVariedFont(hb_face_t* face, const AxisValues& values) {
    FontPtr font(hb_font_create(face));
    std::vector<hb_variation_t> variations;
    for (const auto& [tag, value] : values) {
        variations.push_back({tag, value});
    }
    hb_font_set_variations(font.get(), variations.data(), static_cast<unsigned int>(variations.size()));
    return font;
}

Table readTable(hb_face_t* face, hb_tag_t tag) {
    const BlobPtr blob(hb_face_reference_table(face, tag));
    unsigned int length = 0;
    const char* const data = hb_blob_get_data(blob.get(), &length);
    return data == nullptr ? Table() : Table(data, data + length);
}

void setTable(hb_face_t* instance, hb_tag_t tag, const Table& table) {
    const BlobPtr blob(hb_blob_create(table.data(), static_cast<unsigned int>(table.size()),
                                      HB_MEMORY_MODE_DUPLICATE, nullptr, nullptr));
    if (!table.empty() && !hb_face_builder_add_table(instance, tag, blob.get())) {
        throw std::bad_alloc();
    }
}

void addToField(Table& table, const Field& field, float change) {
    if (table.size() < field.offset + 2) {
        return;
    }
    const auto high = static_cast<unsigned char>(table[field.offset]);
    const auto low = static_cast<unsigned char>(table[field.offset + 1]);
    const unsigned int stored = static_cast<unsigned int>(high) << 8U | low;
    constexpr int range = 0x10000;
    const int before =
        field.isSigned && stored >= range / 2 ? static_cast<int>(stored) - range : static_cast<int>(stored);
    const float lowest = field.isSigned ? -range / 2.0F : 0.0F;
    const float highest = field.isSigned ? range / 2.0F - 1 : range - 1.0F;
    const auto after =
        static_cast<int>(std::clamp(std::round(static_cast<float>(before) + change), lowest, highest));
    table[field.offset] = static_cast<char>(static_cast<unsigned int>(after) >> 8U & 0xFFU);
    table[field.offset + 1] = static_cast<char>(static_cast<unsigned int>(after) & 0xFFU);
}

} // namespace Vell::FontLoaders::Internal
