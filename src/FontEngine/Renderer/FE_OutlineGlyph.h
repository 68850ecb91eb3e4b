#pragma once

#include <Gfx/Public/Painter.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/Export.h>

#include <memory>
#include <utility>

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

} // namespace Vell::FontEngine
