// The glyph services of the factory: bitmaps, coloured images and outline paths, each rendered once.

#include <FontEngine/FE_Exceptions.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_CharSize.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontEngine/Private/FE_PathBuilder.h>
#include <FontEngine/Renderer/FE_BitmapGlyph.h>
#include <FontLoaders/Public/FreeTypeMemory.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <cstdint>
#include <cstdlib>
#include <utility>

namespace Vell::FontEngine {

using Lock = std::lock_guard<std::recursive_mutex>;

namespace {

void assertFace(const CheckedPtrImpl<const FontFace, false>& face, int line) {
    if (!face) {
        doFailAssert("FontEngine/FE_FontFactory", line, "fontFace");
    }
}

void assertBitmapFace(const CheckedPtrImpl<const FontFace, false>& face) {
    assertFace(face, 342);
}

void assertOutlineFace(const CheckedPtrImpl<const FontFace, false>& face) {
    assertFace(face, 433);
}

std::uint64_t weigh(const FT_Bitmap& bitmap) {
    constexpr std::uint64_t recordBytes = 48; // what a glyph's record costs beside its pixels
    const std::uint32_t pixelBytes = static_cast<std::uint32_t>(std::abs(bitmap.pitch)) * bitmap.rows;
    return pixelBytes + recordBytes;
}

std::uint64_t weigh(const BitmapGlyphImage& image) {
    // Four times the buffer, on purpose: the pitch counts the four bytes of a pixel already. Coloured images
    // are cheap to make again from their bitmaps, so they leave their budget sooner.
    const std::uint32_t bytes = image.rows * 4U * static_cast<std::uint32_t>(image.pitch);
    return bytes;
}

static_assert(maxGlyphPixels <= FontLoaders::maxPixelsInMemory);

std::shared_ptr<const FT_BitmapGlyphRec_> renderBitmap(const BitmapGlyphInfo& info, const FontFace& face,
                                                       Internal::SizedFace& sized, bool flipVertically) {
    const FontLoaders::FreeTypeOperation operation(FontLoaders::renderingBounds);
    if (!Internal::trySizeForBitmap(face.getHandle(), info, sized)) {
        return nullptr;
    }
    sized.doubt();
    auto glyph = Internal::createBitmapGlyph(info, face.getHandle(), flipVertically);
    sized.trust(face.getHandle().get());
    return glyph;
}

std::shared_ptr<const Gfx::Path> renderPath(const GlyphInfo& info,
                                            const CheckedPtrImpl<const FontFace, false>& face,
                                            Internal::SizedFace& sized, Gfx::Painter& painter) {
    const FontLoaders::FreeTypeOperation operation(FontLoaders::renderingBounds);
    if (!Internal::trySizeForOutline(face->getHandle(), info, sized)) {
        return nullptr;
    }
    sized.doubt();
    const std::shared_ptr<FT_GlyphRec_> glyph = Internal::createOutlineGlyph(info, face);
    sized.trust(face->getHandle().get());
    if (glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
        return nullptr; // a bitmap-only face
    }
    return Internal::buildPath(reinterpret_cast<FT_OutlineGlyph>(glyph.get())->outline, info, painter);
}

} // namespace

const FontFactory::BitmapPtr& FontFactory::findOrRenderBitmap(const BitmapGlyphInfo& info,
                                                              const FontFace& face,
                                                              bool flipVertically) const {
    const auto render = [&] {
        BitmapPtr glyph = renderBitmap(info, face, *face._sized, flipVertically);
        const std::uint64_t bytes = glyph ? weigh(glyph->bitmap) : 0;
        return BitmapCache::DataNode(std::move(glyph), bytes);
    };
    return _bitmapCache.getOrPut(info, render).getValue();
}

const std::shared_ptr<const FT_BitmapGlyphRec_>&
FontFactory::getBitmapGlyph(const BitmapGlyphInfo& info, CheckedPtrImpl<const FontFace, false> face,
                            bool flipVertically) const {
    assertBitmapFace(face);
    const Lock lock(_bitmapMutex);
    return findOrRenderBitmap(info, *face, flipVertically);
}

FontFactory::BitmapPtr FontFactory::copyBitmapGlyph(const BitmapGlyphInfo& info, const FontFace& face,
                                                    bool flipVertically) const {
    const Lock lock(_bitmapMutex);
    return findOrRenderBitmap(info, face, flipVertically);
}

std::shared_ptr<const BitmapGlyphImageWithDeleter>
FontFactory::getGlyphBitmapWithSubpixels(const BitmapGlyph& glyph,
                                         const cinder::ColorAT<unsigned char>& color) const {
    const ColoredBitmapGlyphInfo key(glyph.getInfo(), ColoredBitmapGlyphInfo::packColor(color));
    const auto paint = [&] {
        ImagePtr image = Internal::getColoredGlyphImage(derefNN(glyph.getData().get()), color);
        if (!image) {
            throw FontEngineException("Failed to create glyph with subpixel support");
        }
        const std::uint64_t bytes = weigh(*image);
        return ImageCache::DataNode(std::move(image), bytes);
    };
    const Lock lock(_imageMutex);
    return _imageCache.getOrPut(key, paint).getValue();
}

const FontFactory::PathPtr& FontFactory::findOrBuildPath(const GlyphInfo& info, const FacePtr& face,
                                                         Gfx::Painter& painter) const {
    const auto build = [&] {
        return OutlineCache::DataNode(renderPath(info, face, *face->_sized, painter), 0);
    };
    return _outlineCache.getOrPut(info, build).getValue();
}

const std::shared_ptr<const Gfx::Path>&
FontFactory::getOutlineGlyphPath(const GlyphInfo& info, CheckedPtrImpl<const FontFace, false> face,
                                 Gfx::Painter& painter) const {
    assertOutlineFace(face);
    const Lock lock(_outlineMutex);
    return findOrBuildPath(info, face, painter);
}

FontFactory::PathPtr FontFactory::copyOutlineGlyphPath(const GlyphInfo& info, const FacePtr& face,
                                                       Gfx::Painter& painter) const {
    assertOutlineFace(face);
    const Lock lock(_outlineMutex);
    return findOrBuildPath(info, face, painter);
}

} // namespace Vell::FontEngine
