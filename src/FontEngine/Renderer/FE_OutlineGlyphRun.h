#pragma once

#include <Gfx/Public/Painter.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/Export.h>

#include <memory>
#include <utility>
#include <vector>

namespace Vell::FontEngine {

/// A glyph outline with its advance. It shares the path with the cache and keeps it alive.
class VELL_API OutlineGlyph {
public:
    /// `path` and `advance` are in font units. Asserts that `path` is not null.
    OutlineGlyph(std::shared_ptr<const Gfx::Path> path, float advance)
        : _path(std::move(path))
        , _advance(advance) {
        if (!_path) {
            doFailAssert("FontEngine/Renderer/FE_OutlineGlyph", 26, "_path");
        }
    }

    const std::shared_ptr<const Gfx::Path>& getPath() const { return _path; }
    /// Distance from this glyph's origin to the next one's in font units, letter spacing included.
    float getAdvance() const { return _advance; }

private:
    std::shared_ptr<const Gfx::Path> _path;
    float _advance;
};

/// A text laid out as outlines, in text order. Immutable; any number of threads may read it.
class VELL_API OutlineGlyphRun {
public:
    OutlineGlyphRun(std::vector<OutlineGlyph> glyphs, unsigned short unitsPerEM);

    const std::vector<OutlineGlyph>& getGlyphs() const { return _glyphs; }
    /// The font units per em of the outlines' face: drawing scales by font size / units per em.
    unsigned short getUnitsPerEM() const { return _unitsPerEM; }

private:
    std::vector<OutlineGlyph> _glyphs;
    unsigned short _unitsPerEM;
};

} // namespace Vell::FontEngine
