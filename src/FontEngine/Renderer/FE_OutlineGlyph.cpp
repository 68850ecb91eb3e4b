#include <FontEngine/Renderer/FE_OutlineGlyph.h>

#include <Utils/Public/Assert.h>

#include <utility>

namespace Vell::FontEngine {

OutlineGlyph::OutlineGlyph(std::shared_ptr<const Gfx::Path> path, float advance)
    : _path(std::move(path))
    , _advance(advance) {
    if (!_path) {
        doFailAssert("FontEngine/Renderer/FE_OutlineGlyph", 26, "_path");
    }
}

} // namespace Vell::FontEngine
