#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <optional>
#include <string>

namespace Vell::FontLoaders::Internal {

/// Why an open face has no charmap to read its characters from; nothing if it has one. May change the current
/// charmap.
std::optional<std::string> findCharmapProblem(FT_Face face);

} // namespace Vell::FontLoaders::Internal
