#pragma once

#include <cinder/Color.h>

#include <string>
#include <string_view>

namespace Vell::Tool {

/// With straight alpha.
using Color = cinder::ColorAT<unsigned char>;

constexpr Color black(0, 0, 0, 255);
constexpr Color white(255, 255, 255, 255);

/// Reads #rgb, #rgba, #rrggbb, #rrggbbaa (hexadecimal digits) or a name, in either case. Throws UsageError
/// for anything else.
Color parseColor(std::string_view text);

/// The names in alphabetical order, separated by commas and broken into lines: the sixteen basic colours of
/// the web, three synonyms, orange and transparent.
std::string listColorNames();

} // namespace Vell::Tool
