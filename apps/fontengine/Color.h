#pragma once

#include <cinder/Color.h>

#include <string_view>

namespace Vell::Tool {

/// With straight alpha.
using Color = cinder::ColorAT<unsigned char>;

constexpr Color black(0, 0, 0, 255);
constexpr Color white(255, 255, 255, 255);

/// Reads #rgb, #rgba, #rrggbb, #rrggbbaa (hexadecimal digits of either case) or one of the sixteen basic
/// colour names of the web, orange or transparent, whatever the case. Throws UsageError for anything else.
Color parseColor(std::string_view text);

} // namespace Vell::Tool
