#pragma once

#include <FontEngine/FE_GlyphInfo.h>
#include <Gfx/Public/Painter.h>

#include <ft2build.h>
#include FT_OUTLINE_H

#include <memory>

namespace Vell::FontEngine::Internal {

/// Draws an outline into a new path of the painter, with the same coordinates except that y points down.
/// Leaves the painter with an empty path. Throws FreeTypeException if FreeType refuses the outline;
/// exceptions from the painter pass through. Asserts that the painter returns a path.
std::shared_ptr<const Gfx::Path> buildPath(const FT_Outline& outline, const GlyphInfo& info,
                                           Gfx::Painter& painter);

} // namespace Vell::FontEngine::Internal
