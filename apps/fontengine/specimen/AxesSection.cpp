// The axes of a variable font, as rows of its instances.

#include "specimen/Html.h"
#include "specimen/Picture.h"
#include "specimen/SampleText.h"
#include "specimen/SpecimenSections.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>
#include <vector>

namespace Vell::Tool {

namespace {

using FontLoaders::AxisSetting;
using FontLoaders::FontAxis;
using FontLoaders::FontVariations;
using FontLoaders::NamedInstance;

// A font may have thousands of instances; each picture costs the making of one.
constexpr std::size_t maxAxisRows = 16;
constexpr std::size_t maxStops = 9;
constexpr std::size_t maxNamedPictures = 36;

/// Serves one font as the family "font".
class OneFontLoader : public FontLoaders::FontLoader {
public:
    explicit OneFontLoader(FontBytes font)
        : _font(std::move(font)) {}

    FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override {
        const bool isServed = faceInfo->getName() == "font" && !faceInfo->isBold() && !faceInfo->isItalic();
        return isServed ? _font : nullptr;
    }
    FontBytes loadDefaultFont(bool bold, bool italic) const override {
        return bold || italic ? nullptr : _font;
    }
    std::string getFamilyNameForRange(unsigned int /*rangeId*/) const override { return ""; }

private:
    FontBytes _font;
};

std::string makeRow(const std::string& heading, const std::string& figures) {
    return fmt::format("<h3>{}</h3>\n<div class=\"row\">\n{}</div>\n", escapeHtml(heading), figures);
}

std::string printSettings(const std::vector<AxisSetting>& settings) {
    std::string list;
    for (const AxisSetting& setting : settings) {
        list += fmt::format("{}{}={}", list.empty() ? "" : ",", setting.tag, setting.value);
    }
    return list;
}

/// Both ends of the axis, its default, and the values between them that instances with names have, as many as
/// fit into a row.
std::vector<float> listStops(const FontVariations& font, std::size_t axisIndex) {
    const FontAxis& axis = font.axes[axisIndex];
    std::set<float> stops = {axis.minimum, axis.defaultValue, axis.maximum};
    std::set<float> named;
    for (const NamedInstance& instance : font.instances) {
        named.insert(std::clamp(instance.coordinates[axisIndex], axis.minimum, axis.maximum));
    }
    for (const float value : named) {
        if (stops.size() < maxStops) {
            stops.insert(value);
        }
    }
    return {stops.begin(), stops.end()};
}

std::string describe(const FontAxis& axis) {
    return fmt::format("{}: {} to {}, {} by default{}",
                       axis.name.empty() ? axis.tag : fmt::format("{} ({})", axis.name, axis.tag),
                       axis.minimum, axis.maximum, axis.defaultValue, axis.isHidden ? ", hidden" : "");
}

/// Draws instances of a variable font.
class InstancePictures {
public:
    explicit InstancePictures(const FontBytes& font)
        : _factory(FontEngine::FontFactory::create(
              FontLoaders::createVariationLoader(makeNNPtr<const OneFontLoader>(font)), "font")) {}

    std::string makeFigure(const std::vector<AxisSetting>& settings, const std::string& caption) const {
        constexpr float size = 38.0F;
        const std::string list = printSettings(settings);
        const TextFont font = makeTextFont(_factory, {"font:" + list, false, false, size});
        const std::string text = chooseShortSample(font);
        return Tool::makeFigure(
            makeImage(drawLine(font, text).picture, "ink", fmt::format("{} at {}", text, list)), caption);
    }

private:
    FactoryPtr _factory;
};

std::string makeAxisRow(const InstancePictures& pictures, const FontVariations& font, std::size_t axisIndex,
                        const std::vector<AxisSetting>& others) {
    const FontAxis& axis = font.axes[axisIndex];
    std::string figures;
    for (const float stop : listStops(font, axisIndex)) {
        std::vector<AxisSetting> settings = others;
        settings.push_back({axis.tag, stop}); // the last setting of an axis counts
        figures += pictures.makeFigure(settings, fmt::format("{}", stop));
    }
    return makeRow(describe(axis), figures);
}

std::vector<AxisSetting> listSettings(const FontVariations& font, const NamedInstance& instance) {
    std::vector<AxisSetting> settings;
    for (std::size_t i = 0; i < font.axes.size(); ++i) {
        settings.push_back({font.axes[i].tag, instance.coordinates[i]});
    }
    return settings;
}

std::string makeNamedRow(const InstancePictures& pictures, const FontVariations& font) {
    std::string figures;
    for (std::size_t i = 0; i < std::min(font.instances.size(), maxNamedPictures); ++i) {
        const NamedInstance& instance = font.instances[i];
        const auto settings = listSettings(font, instance);
        figures +=
            pictures.makeFigure(settings, instance.name.empty() ? printSettings(settings) : instance.name);
    }
    return figures.empty() ? "" : makeRow("Named instances", figures);
}

std::string describeRest(const char* kind, std::size_t count, std::size_t shown) {
    return count <= shown ? ""
                          : fmt::format("<p class=\"note\">Only the first {} of {} {} are shown.</p>\n",
                                        shown, count, kind);
}

std::string makeRows(const FontBytes& bytes, const FontVariations& font,
                     const std::vector<AxisSetting>& others) {
    const InstancePictures pictures(bytes);
    std::string rows;
    for (std::size_t i = 0; i < std::min(font.axes.size(), maxAxisRows); ++i) {
        rows += makeAxisRow(pictures, font, i, others);
    }
    return rows + describeRest("axes", font.axes.size(), maxAxisRows) + makeNamedRow(pictures, font) +
           describeRest("named instances", font.instances.size(), maxNamedPictures);
}

/// Says why a font has no instances, as one with CFF2 outlines.
std::string describeFailure(const FontVariations& font, const std::string& reason) {
    std::string rows;
    for (const FontAxis& axis : font.axes) {
        rows += fmt::format("<h3>{}</h3>\n", escapeHtml(describe(axis)));
    }
    return rows + fmt::format("<p class=\"note\">There are no pictures: {}.</p>\n", escapeHtml(reason));
}

} // namespace

std::string makeAxesSection(const FontSource& source, const std::vector<AxisSetting>& settings) {
    const FontBytes bytes = source.readWholeFont(*source.makeFont(false, false, 1.0F).font);
    const FontVariations font = FontLoaders::readVariations(bytes);
    if (font.axes.empty()) {
        return "";
    }
    try {
        return makeRows(bytes, font, settings);
    } catch (const FontLoaders::FontLoaderException& error) {
        return describeFailure(font, error.what());
    }
}

} // namespace Vell::Tool
