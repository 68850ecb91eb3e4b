#include <TextLayout/Private/FeatureSettings.h>

#include <algorithm>
#include <unordered_set>

namespace Vell::TextLayout {

namespace {

bool holdsForAll(const hb_feature_t& setting) {
    return setting.start == HB_FEATURE_GLOBAL_START && setting.end == HB_FEATURE_GLOBAL_END;
}

} // namespace

const SelectedFeatures& FeatureSettings::select(const TextPart& part) {
    if (part.begin < _validBegin || part.end > _validEnd) {
        selectAnew(part);
    }
    return _selected;
}

void FeatureSettings::selectAnew(const TextPart& part) {
    _selected.settings.clear();
    _selected.holdForAll = true;
    ++_selected.version;
    _validBegin = 0;
    _validEnd = TextFeature::endOfText;
    for (const TextFeature& feature : _features) {
        add(feature, part);
    }
    if (!_selected.holdForAll) {
        _validBegin = 1;
        _validEnd = 0;
    }
    if (_selected.settings.size() > 1) {
        omitOverridden();
    }
}

void FeatureSettings::add(const TextFeature& feature, const TextPart& part) {
    for (const std::size_t border : {feature.begin, feature.end}) {
        if (border <= part.begin) {
            _validBegin = std::max(_validBegin, border);
        }
        if (border >= part.end) {
            _validEnd = std::min(_validEnd, border);
        }
    }
    if (feature.begin >= part.end || feature.end <= part.begin || feature.begin >= feature.end) {
        return;
    }
    if (feature.begin <= part.begin && feature.end >= part.end) {
        _selected.settings.push_back(
            {feature.tag, feature.value, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END});
    } else {
        _selected.holdForAll = false;
        _selected.settings.push_back(
            {feature.tag, feature.value, static_cast<unsigned int>(feature.begin),
             static_cast<unsigned int>(std::min<std::size_t>(feature.end, part.end))});
    }
}

/// Of several settings of one feature, the last counts.
void FeatureSettings::omitOverridden() {
    std::vector<hb_feature_t>& settings = _selected.settings;
    std::unordered_set<hb_tag_t> overridden;
    std::vector<hb_feature_t> kept;
    for (auto setting = settings.rbegin(); setting != settings.rend(); ++setting) {
        if (overridden.count(setting->tag) == 0) {
            kept.push_back(*setting);
        }
        if (holdsForAll(*setting)) {
            overridden.insert(setting->tag);
        }
    }
    settings.assign(kept.rbegin(), kept.rend());
}

} // namespace Vell::TextLayout
