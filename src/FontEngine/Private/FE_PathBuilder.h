#pragma once

#include <FontEngine/FE_GlyphInfo.h>
#include <Gfx/Public/Painter.h>

#include <ft2build.h>
#include FT_OUTLINE_H

#include <memory>

namespace Vell::FontEngine::Internal {

/// Draws an outline into a new path of the painter, with the coordinates as they are but y pointing down, and
/// leaves the painter with an empty path. Throws FreeTypeException when FreeType refuses the outline; what
/// the painter throws passes through. A null path from the painter is a failed assertion.
std::shared_ptr<const Gfx::Path> buildPath(const FT_Outline& outline, const GlyphInfo& info,
                                           Gfx::Painter& painter);

} // namespace Vell::FontEngine::Internal
