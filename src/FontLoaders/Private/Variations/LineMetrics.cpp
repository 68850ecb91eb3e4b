#include <FontLoaders/Private/Variations/LineMetrics.h>

#include <FontLoaders/Private/Variations/InstanceTables.h>

#include <cmath>
#include <cstddef>
#include <map>

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
            addToField(table->second, {field.offset, field.isSigned}, change);
        }
    }
    return tables;
}

} // namespace

void varyLineMetrics(hb_face_t* font, const AxisValues& values, hb_face_t* instance) {
    const FontPtr varied = makeVariedFont(font, values);
    for (const auto& [tag, table] : makeVariedTables(varied.get(), instance)) {
        setTable(instance, tag, table);
    }
}

} // namespace Vell::FontLoaders::Internal
