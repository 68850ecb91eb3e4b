#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Testing {

/// Where Pango begins the lines of a text, in a font of 20 units an em without hinting, at a width in the
/// same units. With hyphens, Pango adds one wherever it divides a word, at soft hyphens and elsewhere.
std::vector<std::size_t> findPangoLines(const std::string& text, const std::string& family, int width,
                                        bool hasHyphens);

} // namespace Vell::Testing
