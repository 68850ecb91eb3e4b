#include <TextLayout/Private/LookupReach.h>

#include <TextLayout/Private/LookupClasses.h>

#include <hb-aat.h>
#include <hb-ot.h>

#include <array>
#include <new>
#include <utility>

namespace Vell::TextLayout {

namespace {

HarfBuzzPtr<hb_set_t> makeSet() {
    HarfBuzzPtr<hb_set_t> set(hb_set_create());
    if (hb_set_allocation_successful(set.get()) == 0) {
        throw std::bad_alloc();
    }
    return set;
}

bool containsTable(hb_face_t* face, hb_tag_t tag) {
    const HarfBuzzPtr<hb_blob_t> table(hb_face_reference_table(face, tag));
    return hb_blob_get_length(table.get()) != 0;
}

/// Whether the plan's lookups in GPOS include those of the feature "kern".
bool hasPositioningOfPairs(hb_face_t* face, const hb_segment_properties_t& properties) {
    std::array<hb_tag_t, HB_OT_MAX_TAGS_PER_SCRIPT> scripts{};
    std::array<hb_tag_t, HB_OT_MAX_TAGS_PER_LANGUAGE> languages{};
    auto scriptCount = static_cast<unsigned int>(scripts.size());
    auto languageCount = static_cast<unsigned int>(languages.size());
    hb_ot_tags_from_script_and_language(properties.script, properties.language, &scriptCount, scripts.data(),
                                        &languageCount, languages.data());
    unsigned int script = 0;
    unsigned int language = 0;
    unsigned int feature = 0;
    hb_ot_layout_table_select_script(face, HB_OT_TAG_GPOS, scriptCount, scripts.data(), &script, nullptr);
    hb_ot_layout_script_select_language(face, HB_OT_TAG_GPOS, script, languageCount, languages.data(),
                                        &language);
    return hb_ot_layout_language_find_feature(face, HB_OT_TAG_GPOS, script, language,
                                              HB_TAG('k', 'e', 'r', 'n'), &feature) != 0;
}

/// Whether HarfBuzz takes substitutions or positions from the older tables, which are not examined here.
bool usesOlderTables(hb_face_t* face, const hb_segment_properties_t& properties) {
    return hb_aat_layout_has_substitution(face) != 0 || hb_aat_layout_has_positioning(face) != 0 ||
           (containsTable(face, HB_TAG('k', 'e', 'r', 'n')) && !hasPositioningOfPairs(face, properties));
}

/// Adds what the lookups of one table look at. Returns whether that is all.
bool collectReach(hb_face_t* face, hb_shape_plan_t* plan, hb_tag_t table, hb_set_t* reach) {
    const HarfBuzzPtr<hb_set_t> lookups = makeSet();
    hb_ot_shape_plan_collect_lookups(plan, table, lookups.get());
    hb_codepoint_t lookup = HB_SET_VALUE_INVALID;
    while (hb_set_next(lookups.get(), &lookup) != 0) {
        if (mayMatchClassZero(face, table, lookup)) {
            return false;
        }
        hb_ot_layout_lookup_collect_glyphs(face, table, lookup, reach, reach, reach, nullptr);
    }
    return true;
}

} // namespace

HarfBuzzPtr<hb_set_t> findReachOfLookups(hb_face_t* face, const hb_segment_properties_t& properties,
                                         hb_shape_plan_t* plan) {
    if (usesOlderTables(face, properties)) {
        return nullptr;
    }
    HarfBuzzPtr<hb_set_t> reach = makeSet();
    if (!collectReach(face, plan, HB_OT_TAG_GSUB, reach.get()) ||
        !collectReach(face, plan, HB_OT_TAG_GPOS, reach.get())) {
        return nullptr;
    }
    return hb_set_allocation_successful(reach.get()) != 0 ? std::move(reach) : nullptr;
}

} // namespace Vell::TextLayout
