#include <FontLoaders/Public/FontVariations.h>

#include <FontLoaders/Private/HarfBuzz.h>
#include <FontLoaders/Private/Variations/FontInstancer.h>
#include <FontLoaders/Private/Variations/VariationTables.h>
#include <FontLoaders/Public/Exceptions.h>

#include <Utils/Public/Ptr/PtrUtils.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <system_error>

namespace Vell::FontLoaders {

namespace {

bool isTag(std::string_view text) {
    constexpr std::size_t longest = 4;
    return !text.empty() && text.size() <= longest &&
           std::all_of(text.begin(), text.end(), [](char byte) { return byte > ' ' && byte <= '~'; });
}

/// NaN for a text that is no finite number.
float parseValue(std::string_view text) {
    using Limits = std::numeric_limits<float>;
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    const bool isNumber = error == std::errc() && rest == end && std::isfinite(value);
    return isNumber ? static_cast<float>(std::clamp<double>(value, Limits::lowest(), Limits::max()))
                    : Limits::quiet_NaN();
}

AxisSetting parseSetting(std::string_view text) {
    const auto equals = static_cast<std::size_t>(std::find(text.begin(), text.end(), '=') - text.begin());
    const std::string_view tag = text.substr(0, equals);
    if (!isTag(tag) || equals == text.size()) {
        throw FontLoaderException(fmt::format("the setting \"{}\" is not of the form AXIS=VALUE", text));
    }
    const float value = parseValue(text.substr(equals + 1));
    if (std::isnan(value)) {
        throw FontLoaderException(fmt::format("the value of the setting \"{}\" is not a number", text));
    }
    return {std::string(tag), value};
}

} // namespace

FontVariations readVariations(const NNPtr<const std::vector<unsigned char>>& bytes) {
    const Internal::BlobPtr file = Internal::makeView(*bytes);
    const Internal::HarfBuzzFacePtr face(hb_face_create(file.get(), 0));
    return Internal::readVariations(face.get());
}

std::vector<AxisSetting> parseVariations(std::string_view text) {
    std::vector<AxisSetting> settings;
    while (!text.empty()) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const bool isLast = comma == text.size();
        if (!isLast && comma + 1 == text.size()) {
            throw FontLoaderException(fmt::format("the settings \"{}\" end with a comma", text));
        }
        settings.push_back(parseSetting(text.substr(0, comma)));
        text.remove_prefix(isLast ? comma : comma + 1);
    }
    return settings;
}

FontBytes makeFontInstance(const NNPtr<const std::vector<unsigned char>>& bytes,
                           const std::vector<AxisSetting>& settings) {
    const Internal::BlobPtr file = Internal::makeView(*bytes);
    const Internal::HarfBuzzFacePtr face(hb_face_create(file.get(), 0));
    const Internal::AxisValues values = Internal::resolveSettings(face.get(), settings);
    if (values.empty()) {
        return bytes;
    }
    auto instance =
        makeNNPtr<const std::vector<unsigned char>>(Internal::makeStaticFont(bytes, face.get(), values));
    if (const auto reason = findReasonNotToServe(instance)) {
        throw FontLoaderException("the variable font is damaged: " + *reason);
    }
    return instance;
}

} // namespace Vell::FontLoaders
