#include <TextLayout/Private/ShapePlan.h>

#include <TextLayout/Private/LookupReach.h>
#include <TextLayout/Private/RunDependence.h>
#include <TextLayout/Public/TextLayoutException.h>

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace Vell::TextLayout {

namespace {

bool areSameFeature(const hb_feature_t& lhs, const hb_feature_t& rhs) {
    return lhs.tag == rhs.tag && lhs.value == rhs.value && lhs.start == rhs.start && lhs.end == rhs.end;
}

bool holdsForAll(const hb_feature_t& feature) {
    return feature.start == HB_FEATURE_GLOBAL_START && feature.end == HB_FEATURE_GLOBAL_END;
}

HarfBuzzPtr<hb_shape_plan_t> makePlan(hb_font_t* font, const ShapePlanKey& key) {
    HarfBuzzPtr<hb_shape_plan_t> plan(
        hb_shape_plan_create_cached(hb_font_get_face(font), &key.properties, key.features.data(),
                                    static_cast<unsigned int>(key.features.size()), nullptr));
    if (plan.get() == hb_shape_plan_get_empty()) {
        throw std::bad_alloc();
    }
    return plan;
}

std::uint16_t findGlyph(hb_font_t* font, hb_codepoint_t character) {
    hb_codepoint_t glyph = 0;
    const bool isFound = hb_font_get_nominal_glyph(font, character, &glyph) != 0;
    return isFound && glyph <= std::numeric_limits<std::uint16_t>::max() ? static_cast<std::uint16_t>(glyph)
                                                                         : std::uint16_t{0};
}

} // namespace

ShapePlanKey::ShapePlanKey(const hb_segment_properties_t& keyProperties,
                           std::vector<hb_feature_t> keyFeatures)
    : properties(keyProperties)
    , features(std::move(keyFeatures)) {
    for (hb_feature_t& feature : features) {
        if (!holdsForAll(feature)) {
            feature.start = feature.end = 1;
        }
    }
}

bool ShapePlanKey::operator==(const ShapePlanKey& other) const {
    return hb_segment_properties_equal(&properties, &other.properties) != 0 &&
           std::equal(features.begin(), features.end(), other.features.begin(), other.features.end(),
                      areSameFeature);
}

ShapePlan::ShapePlan(const Font& font, ShapePlanKey key, std::uint32_t id)
    : _font(font.handle)
    , _isSpoiled(font.isSpoiled)
    , _key(std::move(key))
    , _id(id)
    , _runsAgainstScript(TextLayout::runsAgainstScript(_key.properties))
    , _mayDecompose(mayBeDecomposed(_key.properties.script))
    , _hasSyllables(TextLayout::hasSyllables(_key.properties.script))
    , _mayJoin(TextLayout::mayJoin(_key.properties.script))
    , _mayHaveIdeographs(TextLayout::mayHaveIdeographs(_key.properties.script))
    , _dottedCircle(0) {
    const AllocationWatch watch;
    _dottedCircle = findGlyph(_font, 0x25CC);
    _plan = makePlan(_font, _key);
    check(watch);
}

void ShapePlan::check(const AllocationWatch& watch) const {
    if (watch.hasFailed()) {
        _isSpoiled = true;
    }
    if (_isSpoiled) {
        throw std::bad_alloc();
    }
}

void ShapePlan::execute(hb_buffer_t* buffer, const std::vector<hb_feature_t>& features) const {
    hb_buffer_set_segment_properties(buffer, &_key.properties);
    if (_key.properties.script == HB_SCRIPT_ARABIC) {
        const unsigned int flags = hb_buffer_get_flags(buffer);
        hb_buffer_set_flags(
            buffer, static_cast<hb_buffer_flags_t>(flags | HB_BUFFER_FLAG_PRODUCE_SAFE_TO_INSERT_TATWEEL));
    }
    const AllocationWatch watch;
    // hb_shape_plan_execute() itself limits neither the glyphs nor the time; this call finds the same plan.
    const bool isDone = hb_shape_full(_font, buffer, features.data(),
                                      static_cast<unsigned int>(features.size()), nullptr) != 0;
    check(watch);
    if (!isDone || hb_buffer_allocation_successful(buffer) == 0) {
        throw TextLayoutException(
            "hb_shape_full: out of memory, or the font makes too many glyphs or takes too many steps");
    }
}

const FreeGlyph* ShapePlan::findNewFreeGlyph(char32_t codePoint) {
    const std::size_t page = codePoint / pageSize;
    if (page >= _pages.size()) {
        _pages.resize(page + 1);
    }
    if (!_pages[page]) {
        _pages[page] = std::make_unique<Page>();
    }
    Entry& entry = (*_pages[page])[codePoint % pageSize];
    entry = examine(codePoint);
    return entry.answer == Answer::Free ? &entry.glyph : nullptr;
}

const HarfBuzzPtr<hb_set_t>& ShapePlan::findReach() {
    const AllocationWatch watch;
    auto reach = findReachOfLookups(hb_font_get_face(_font), _key.properties, _plan.get());
    check(watch);
    return _reach.emplace(std::move(reach));
}

ShapePlan::Entry ShapePlan::examine(char32_t codePoint) {
    constexpr Entry bound{Answer::Bound, {}};
    const hb_set_t* const reach = getReach();
    const AllocationWatch watch;
    const std::uint16_t glyph = findGlyph(_font, codePoint);
    const hb_position_t advance = glyph != 0 ? hb_font_get_glyph_h_advance(_font, glyph) : 0;
    check(watch);
    const bool isFree = reach != nullptr && glyph != 0 && hb_set_has(reach, glyph) == 0;
    return isFree ? Entry{Answer::Free, {glyph, advance}} : bound;
}

} // namespace Vell::TextLayout
