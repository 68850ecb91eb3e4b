#pragma once

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <string>
#include <vector>

namespace Vell::FontEngine {

/// A request that leads to a glyph, a run or a drawing. It describes the result down to pixels and segments,
/// or returns "null" if there is none. The text is "A", or "_" for an underscore, which is rendered with
/// sub-pixels.
struct Service {
    const char* name;
    std::string (*perform)(const Engine& engine, const FacePtr& face, const char* text, float size);
};

/// Requests that render the bitmap of a glyph.
const std::vector<Service>& getBitmapServices();
/// Requests that build the outline of a glyph.
const std::vector<Service>& getOutlineServices();

std::string describe(const FT_BitmapGlyphRec_* glyph);
std::string describe(const BitmapGlyphImage* image);
/// Describes a path that a RecordingPainter built.
std::string describe(const Gfx::Path* path);

/// The key that the painters make for the text's only glyph under an unscaled transform.
KeyFields makeKey(const FacePtr& face, const char* text, float size);

} // namespace Vell::FontEngine
