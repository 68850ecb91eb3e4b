#pragma once

#include <FontLoaders/Public/FontVariations.h>

#include <cstddef>
#include <optional>
#include <vector>

namespace Vell::FontLoaders::Internal {

struct RequestedStyle {
    bool bold;
    bool italic;
};

/// The styles of the faces whose axes may serve a request, from the one that has all of it.
std::vector<RequestedStyle> listServingStyles(const RequestedStyle& wanted);

/// Of how many settings a font has the axes.
std::size_t countAxes(const FontBytes& font, const std::vector<AxisSetting>& settings);

/// What a request wants beyond the style that a face has already.
struct MissingStyle {
    bool bold;
    bool italic;
};

/// The settings, with those that give a face the missing style: wght=700 for bold; for italic ital=1, or slnt
/// as far as it goes to -14. A setting that is there already decides that part of the style and stays. Empty
/// if the axes cannot give the style.
std::optional<std::vector<AxisSetting>>
addStyle(const std::vector<FontAxis>& axes, std::vector<AxisSetting> settings, const MissingStyle& missing);

} // namespace Vell::FontLoaders::Internal
