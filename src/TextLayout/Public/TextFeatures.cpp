#include <TextLayout/Public/TextFeatures.h>

#include <TextLayout/Public/TextLayoutException.h>

#include <hb.h>

#include <algorithm>
#include <string>

namespace Vell::TextLayout {

namespace {

TextFeature parseTextFeature(std::string_view setting) {
    hb_feature_t feature{};
    if (hb_feature_from_string(setting.data(), static_cast<int>(setting.size()), &feature) == 0) {
        throw TextLayoutException("\"" + std::string(setting) + "\" is not a setting of an OpenType feature");
    }
    return {feature.tag, feature.value, feature.start,
            feature.end == HB_FEATURE_GLOBAL_END ? TextFeature::endOfText : feature.end};
}

} // namespace

std::vector<TextFeature> parseTextFeatures(std::string_view list) {
    std::vector<TextFeature> features;
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        features.push_back(parseTextFeature(list.substr(0, comma)));
        list.remove_prefix(std::min(comma + 1, list.size()));
    }
    return features;
}

} // namespace Vell::TextLayout
