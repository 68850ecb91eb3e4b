#include <FontLoaders/Private/Variations/AxisValues.h>

#include <FontLoaders/Private/Variations/VariationTables.h>
#include <FontLoaders/Public/Exceptions.h>

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

namespace Vell::FontLoaders::Internal {

namespace {

[[noreturn]] void throwUnknownAxis(const std::vector<hb_ot_var_axis_info_t>& axes, const std::string& tag) {
    if (axes.empty()) {
        throw FontLoaderException(fmt::format("the font has no axis \"{}\": it is not a variable font", tag));
    }
    std::string tags;
    for (const hb_ot_var_axis_info_t& axis : axes) {
        tags += (tags.empty() ? "" : ", ") + getTagText(axis.tag);
    }
    throw FontLoaderException(fmt::format("the font has no axis \"{}\"; it has {}", tag, tags));
}

} // namespace

AxisValues resolveSettings(hb_face_t* face, const std::vector<AxisSetting>& settings) {
    const std::vector<hb_ot_var_axis_info_t> axes = readAxes(face);
    AxisValues values;
    for (const hb_ot_var_axis_info_t& axis : axes) {
        values.emplace_back(axis.tag, axis.default_value);
    }
    for (const AxisSetting& setting : settings) {
        if (std::isnan(setting.value)) {
            throw FontLoaderException(
                fmt::format("the value of the setting \"{}\" is not a number", setting.tag));
        }
        bool isKnown = false;
        for (std::size_t i = 0; i < axes.size(); ++i) {
            if (getTagText(axes[i].tag) == setting.tag) {
                values[i].second = std::clamp(setting.value, axes[i].min_value, axes[i].max_value);
                isKnown = true;
            }
        }
        if (!isKnown) {
            throwUnknownAxis(axes, setting.tag);
        }
    }
    return values;
}

} // namespace Vell::FontLoaders::Internal
