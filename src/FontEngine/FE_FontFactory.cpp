#include <FontEngine/FE_FontFactory.h>

#include <FontEngine/FE_FontFaceInfo.h>
#include <FontEngine/FE_FontInfo.h>
#include <FontEngine/Private/FE_StyleFallback.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/PlatformFontLoader.h>
#include <FontLoaders/Public/UnicodeRangeMap.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <utility>

namespace Vell::FontEngine {

using Lock = std::lock_guard<std::recursive_mutex>;

namespace {

template <class Cache>
CacheFigures getFigures(const Cache& cache, std::recursive_mutex& mutex) {
    const Lock lock(mutex);
    return {
        cache.size(),         cache.getEffectiveSizeInBytes(), cache.getEvictedCount(),  cache.getHitCount(),
        cache.getMissCount(), cache.getMaxEntries(),           cache.getMaxSizeInBytes()};
}

} // namespace

CheckedPtrImpl<FontFactory, false>
FontFactory::create(CheckedPtrImpl<const FontLoaders::FontLoader, false> loader,
                    const std::string& defaultFaceName) {
    return makeNNPtr<FontFactory>(FactoryAccessTag{}, std::move(loader), defaultFaceName);
}

CheckedPtrImpl<FontFactory, false> FontFactory::create(const std::string& defaultFaceName) {
    return create(FontLoaders::createPlatformDefaultFontLoader(defaultFaceName), defaultFaceName);
}

FontFactory::FontFactory(FactoryAccessTag, CheckedPtrImpl<const FontLoaders::FontLoader, false> loader,
                         const std::string& defaultFaceName)
    : FontFactory(std::move(loader), defaultFaceName) {}

FontFactory::FontFactory(CheckedPtrImpl<const FontLoaders::FontLoader, false> loader,
                         const std::string& defaultFaceName)
    : _fontLoader(std::move(loader))
    , _defaultFaceName(defaultFaceName) {}

FontFactory::~FontFactory() = default;

FactoryCacheFigures FontFactory::getCacheFigures() const {
    return {getFigures(_faceBytesCache, _faceBytesMutex), getFigures(_faceCache, _faceMutex),
            getFigures(_bitmapCache, _bitmapMutex), getFigures(_imageCache, _imageMutex),
            getFigures(_outlineCache, _outlineMutex)};
}

void FontFactory::flush() {
    // What depends on something goes before it: glyphs, then their faces, then the faces' files.
    _bitmapCache.clear();
    _imageCache.clear();
    _outlineCache.clear();
    _faceCache.clear();
    _faceBytesCache.clear();
}

void FontFactory::reset(unsigned long maxFaceCount, unsigned long maxBitmapBytes) {
    // All are made before any takes effect, so that nothing has changed if there is no memory for one of
    // them. They end in the order of flush, with what they have taken over.
    FaceBytesCache faceBytes(maxFaceCount, 0);
    FaceCache faces(maxFaceCount, 0);
    ImageCache images(0, maxBitmapBytes);
    BitmapCache bitmaps(0, maxBitmapBytes);
    _bitmapCache = std::move(bitmaps);
    _imageCache = std::move(images);
    _faceCache = std::move(faces);
    _faceBytesCache = std::move(faceBytes);
}

CheckedPtrImpl<const Gfx::FontFaceInfo, false>
FontFactory::substituteDefaultFaceName(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo) const {
    return makeNNPtr<Internal::FontFaceInfo>(_defaultFaceName, faceInfo->isBold(), faceInfo->isItalic());
}

FontFactory::FaceBytes FontFactory::loadFaceBytes(const FaceKey& faceInfo) const {
    if (faceInfo->getName().empty()) {
        return _fontLoader->loadDefaultFont(faceInfo->isBold(), faceInfo->isItalic());
    }
    return _fontLoader->loadFont(faceInfo);
}

std::shared_ptr<const std::vector<unsigned char>>
FontFactory::getFaceDataBytes(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo) const {
    const Lock lock(_faceBytesMutex);
    const auto load = [&] { return FaceBytesCache::DataNode(loadFaceBytes(faceInfo), 0); };
    return _faceBytesCache.getOrPut(faceInfo, load).getValue();
}

std::shared_ptr<const FaceData>
FontFactory::getFaceData(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo) const {
    const FaceBytes exact = getFaceDataBytes(faceInfo);
    const Internal::RequestedStyle request{faceInfo->getName(), faceInfo->isBold(), faceInfo->isItalic()};
    if (exact && Internal::mayUseExactStyle(request)) {
        return makeNNPtr<const FaceData>(FaceData{exact, GlyphTransform::None});
    }
    return Internal::findSimilarStyle(request, [&](bool bold, bool italic) {
        return getFaceDataBytes(makeNNPtr<Internal::FontFaceInfo>(request.name, bold, italic));
    });
}

FontFactory::FacePtr FontFactory::openFace(const FaceKey& faceInfo) const {
    std::shared_ptr<const FaceData> data = getFaceData(faceInfo);
    if (!data) {
        data = getFaceData(makeNNPtr<Internal::FontFaceInfo>("", faceInfo->isBold(), faceInfo->isItalic()));
    }
    if (!data) {
        throw FontLoaders::FontLoaderException("getFace() failed: cannot load font");
    }
    return makeNNPtr<FontFace>(Gfx::FactoryAccessTag{}, shared_from_this(), *data);
}

const FontFactory::FacePtr& FontFactory::findOrOpenFace(const FaceKey& faceInfo) const {
    // Kept under the requested description even when the default face serves, so that the next request is a
    // hit.
    const auto open = [&] { return FaceCache::DataNode(openFace(faceInfo), 0); };
    return _faceCache.getOrPut(faceInfo, open).getValue();
}

const CheckedPtrImpl<const FontFace, false>&
FontFactory::getFace(const CheckedPtrImpl<const Gfx::FontFaceInfo, false>& faceInfo) const {
    const Lock lock(_faceMutex);
    return findOrOpenFace(faceInfo);
}

FontFactory::FacePtr FontFactory::copyFace(const FaceKey& faceInfo) const {
    const Lock lock(_faceMutex);
    return findOrOpenFace(faceInfo);
}

Font FontFactory::getFont(const CheckedPtrImpl<const Gfx::FontInfo, false>& fontInfo) const {
    return Font(Gfx::FactoryAccessTag{}, fontInfo, copyFace(fontInfo->getFontFaceInfo()));
}

CheckedPtrImpl<const Gfx::FontMetrics, false>
FontFactory::getFontMetrics(const CheckedPtrImpl<const Gfx::FontInfo, false>& fontInfo) const {
    return makeNNPtr<Font>(getFont(fontInfo));
}

std::optional<FontFactory::FallbackRequest>
FontFactory::requestFallback(unsigned int codePoint,
                             const CheckedPtrImpl<const Gfx::FontInfo, false>& fontInfo) const {
    const unsigned int range = FontLoaders::UnicodeRangeMap::find(codePoint);
    if (range == 0) {
        return std::nullopt;
    }
    std::string family = _fontLoader->getFamilyNameForRange(range);
    if (family.empty()) {
        return std::nullopt;
    }
    const auto style = fontInfo->getFontFaceInfo();
    return FallbackRequest{std::move(family), style->isBold(), style->isItalic(), fontInfo->getSize(),
                           fontInfo->getTextPositionType()};
}

std::shared_ptr<const Font>
FontFactory::getDefaultFontForSymbol(unsigned int codePoint,
                                     const CheckedPtrImpl<const Gfx::FontInfo, false>& fontInfo) const {
    const auto request = requestFallback(codePoint, fontInfo);
    if (!request) {
        return nullptr;
    }
    const auto face = makeNNPtr<Internal::FontFaceInfo>(request->family, request->bold, request->italic);
    return std::make_shared<const Font>(
        getFont(makeNNPtr<Internal::FontInfo>(face, request->size, request->textPositionType)));
}

} // namespace Vell::FontEngine
