#include <FontLoaders/Private/Variations/LineMetrics.h>

#include <FontLoaders/Private/HarfBuzz.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <memory>
#include <new>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr hb_tag_t hhea = HB_TAG('h', 'h', 'e', 'a');
constexpr hb_tag_t vhea = HB_TAG('v', 'h', 'e', 'a');
constexpr hb_tag_t os2 = HB_TAG('O', 'S', '/', '2');
constexpr hb_tag_t post = HB_TAG('p', 'o', 's', 't');

/// Where a table has a number of 16 bits that varies under a metric's tag.
struct VariedField {
    hb_tag_t metric;
    hb_tag_t table;
    std::size_t offset;
    bool isSigned;
};

constexpr VariedField variedFields[] = {
    {HB_TAG('h', 'a', 's', 'c'), hhea, 4, true},  {HB_TAG('h', 'a', 's', 'c'), os2, 68, true},
    {HB_TAG('h', 'd', 's', 'c'), hhea, 6, true},  {HB_TAG('h', 'd', 's', 'c'), os2, 70, true},
    {HB_TAG('h', 'l', 'g', 'p'), hhea, 8, true},  {HB_TAG('h', 'l', 'g', 'p'), os2, 72, true},
    {HB_TAG('h', 'c', 'r', 's'), hhea, 18, true}, {HB_TAG('h', 'c', 'r', 'n'), hhea, 20, true},
    {HB_TAG('h', 'c', 'o', 'f'), hhea, 22, true}, {HB_TAG('h', 'c', 'l', 'a'), os2, 74, false},
    {HB_TAG('h', 'c', 'l', 'd'), os2, 76, false}, {HB_TAG('x', 'h', 'g', 't'), os2, 86, true},
    {HB_TAG('c', 'p', 'h', 't'), os2, 88, true},  {HB_TAG('s', 'b', 'x', 's'), os2, 10, true},
    {HB_TAG('s', 'b', 'y', 's'), os2, 12, true},  {HB_TAG('s', 'b', 'x', 'o'), os2, 14, true},
    {HB_TAG('s', 'b', 'y', 'o'), os2, 16, true},  {HB_TAG('s', 'p', 'x', 's'), os2, 18, true},
    {HB_TAG('s', 'p', 'y', 's'), os2, 20, true},  {HB_TAG('s', 'p', 'x', 'o'), os2, 22, true},
    {HB_TAG('s', 'p', 'y', 'o'), os2, 24, true},  {HB_TAG('s', 't', 'r', 's'), os2, 26, true},
    {HB_TAG('s', 't', 'r', 'o'), os2, 28, true},  {HB_TAG('u', 'n', 'd', 'o'), post, 8, true},
    {HB_TAG('u', 'n', 'd', 's'), post, 10, true}, {HB_TAG('v', 'a', 's', 'c'), vhea, 4, true},
    {HB_TAG('v', 'd', 's', 'c'), vhea, 6, true},  {HB_TAG('v', 'l', 'g', 'p'), vhea, 8, true},
    {HB_TAG('v', 'c', 'r', 's'), vhea, 18, true}, {HB_TAG('v', 'c', 'r', 'n'), vhea, 20, true},
    {HB_TAG('v', 'c', 'o', 'f'), vhea, 22, true}};

using FontPtr = std::unique_ptr<hb_font_t, decltype(&hb_font_destroy)>;
using Table = std::vector<char>;

FontPtr makeVariedFont(hb_face_t* face, const AxisValues& values) {
    FontPtr font(hb_font_create(face), hb_font_destroy);
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

/// Adds to a field, within the range of its type. Leaves a table that is too short to have the field.
void add(Table& table, const VariedField& field, float change) {
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

/// The tables of the instance that the metrics change.
std::map<hb_tag_t, Table> makeVariedTables(hb_font_t* font, hb_face_t* instance) {
    std::map<hb_tag_t, Table> tables;
    for (const VariedField& field : variedFields) {
        const float change =
            hb_ot_metrics_get_variation(font, static_cast<hb_ot_metrics_tag_t>(field.metric));
        if (std::isfinite(change) && std::round(change) != 0.0F) {
            const auto [table, isNew] = tables.try_emplace(field.table);
            if (isNew) {
                table->second = readTable(instance, field.table);
            }
            add(table->second, field, change);
        }
    }
    return tables;
}

} // namespace

void varyLineMetrics(hb_face_t* font, const AxisValues& values, hb_face_t* instance) {
    const FontPtr varied = makeVariedFont(font, values);
    for (const auto& [tag, table] : makeVariedTables(varied.get(), instance)) {
        const BlobPtr blob(hb_blob_create(table.data(), static_cast<unsigned int>(table.size()),
                                          HB_MEMORY_MODE_DUPLICATE, nullptr, nullptr));
        if (!table.empty() && !hb_face_builder_add_table(instance, tag, blob.get())) {
            throw std::bad_alloc();
        }
    }
}

} // namespace Vell::FontLoaders::Internal
