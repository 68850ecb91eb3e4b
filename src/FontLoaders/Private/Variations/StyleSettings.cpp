#include <FontLoaders/Private/Variations/StyleSettings.h>

#include <algorithm>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr float boldWeight = 700.0F;
constexpr float italicValue = 1.0F;
constexpr float obliqueAngle = -14.0F; // degrees; negative angles lean to the right

bool isSet(const std::vector<AxisSetting>& settings, const char* tag) {
    return std::any_of(settings.begin(), settings.end(),
                       [tag](const AxisSetting& setting) { return setting.tag == tag; });
}

const FontAxis* findAxis(const std::vector<FontAxis>& axes, const char* tag) {
    const auto found =
        std::find_if(axes.begin(), axes.end(), [tag](const FontAxis& axis) { return axis.tag == tag; });
    return found == axes.end() ? nullptr : &*found;
}

bool reaches(const FontAxis* axis, float value) {
    return axis != nullptr && axis->minimum <= value && value <= axis->maximum;
}

bool addBold(const std::vector<FontAxis>& axes, std::vector<AxisSetting>& settings) {
    if (isSet(settings, "wght")) {
        return true;
    }
    if (!reaches(findAxis(axes, "wght"), boldWeight)) {
        return false;
    }
    settings.push_back({"wght", boldWeight});
    return true;
}

bool addItalic(const std::vector<FontAxis>& axes, std::vector<AxisSetting>& settings) {
    if (isSet(settings, "ital") || isSet(settings, "slnt")) {
        return true;
    }
    if (reaches(findAxis(axes, "ital"), italicValue)) {
        settings.push_back({"ital", italicValue});
        return true;
    }
    const FontAxis* const slant = findAxis(axes, "slnt");
    if (slant == nullptr || slant->minimum >= 0.0F) {
        return false;
    }
    settings.push_back({"slnt", std::max(slant->minimum, obliqueAngle)});
    return true;
}

} // namespace

std::size_t countAxes(const FontBytes& font, const std::vector<AxisSetting>& settings) {
    const std::vector<FontAxis> axes = FontLoaders::readVariations(font).axes;
    return static_cast<std::size_t>(
        std::count_if(settings.begin(), settings.end(), [&axes](const AxisSetting& setting) {
            return findAxis(axes, setting.tag.c_str()) != nullptr;
        }));
}

std::vector<RequestedStyle> listServingStyles(const RequestedStyle& wanted) {
    std::vector<RequestedStyle> styles = {wanted};
    if (wanted.bold && wanted.italic) {
        styles.push_back({false, true});
        styles.push_back({true, false});
    }
    if (wanted.bold || wanted.italic) {
        styles.push_back({false, false});
    }
    return styles;
}

std::optional<std::vector<AxisSetting>>
addStyle(const std::vector<FontAxis>& axes, std::vector<AxisSetting> settings, const MissingStyle& missing) {
    const bool isBoldEnough = !missing.bold || addBold(axes, settings);
    const bool isItalicEnough = !missing.italic || addItalic(axes, settings);
    return isBoldEnough && isItalicEnough ? std::make_optional(std::move(settings)) : std::nullopt;
}

} // namespace Vell::FontLoaders::Internal
