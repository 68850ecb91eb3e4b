#include <FontEngine/Renderer/FE_GlyphOutlines.h>

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_GlyphService.h>
#include <FontEngine/Private/FE_GlyphSources.h>

#include <algorithm>

namespace Vell::FontEngine {

std::vector<std::shared_ptr<const Gfx::Path>> fetchOutlines(const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                                                            const NNPtr<const FontFace>& face, float fontSize,
                                                            const unsigned short* glyphIndices,
                                                            std::size_t count, Gfx::Painter& painter) {
    std::vector<std::shared_ptr<const Gfx::Path>> paths(count);
    Internal::OutlineSource source{
        Internal::OutlineCache::Handle({faceInfo.get(), fontSize, face->getTransform()}), faceInfo, face};
    Internal::FactoryPin factory;
    for (std::size_t begin = 0; begin < count; begin += Internal::maxBatchSize) {
        const std::size_t batchSize = std::min(count - begin, Internal::maxBatchSize);
        face->getGlyphAccess().copyPaths(source, glyphIndices + begin, batchSize, painter, &paths[begin],
                                         factory);
    }
    return paths;
}

} // namespace Vell::FontEngine
