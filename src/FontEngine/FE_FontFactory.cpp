#include <FontEngine/FE_FontFactory.h>

#include <FontEngine/Color/FE_ColorGlyphs.h>
#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/Private/FE_Fallback.h>
#include <FontEngine/Private/FE_GlyphService.h>
#include <FontEngine/Private/FE_LockedCache.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/PlatformFontLoader.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <functional>
#include <utility>

namespace Vell::FontEngine {

namespace Internal {

using FaceKey = NNPtr<const Gfx::FontFaceInfo>;
using FacePtr = NNPtr<const FontFace>;

/// The font files and the faces of a factory, by description. A thread that needs both locks takes that of
/// the faces first. The destructor destroys the last member first: faces before the files that they were made
/// from.
struct FaceCaches {
    LockedCache<FaceKey, FontLoaders::FontBytes, std::hash<FaceKey>> files;
    LockedCache<FaceKey, FacePtr, std::hash<FaceKey>> faces;
};

} // namespace Internal

using FontLoaders::FontBytes;
using Internal::FaceKey;
using Internal::FacePtr;

namespace {

void assertFace(const FacePtr& face, int line) {
    if (!face) {
        doFailAssert("FontEngine/FE_FontFactory", line, "fontFace");
    }
}

} // namespace

NNPtr<FontFactory> FontFactory::create(NNPtr<const FontLoaders::FontLoader> loader,
                                       const std::string& defaultFaceName) {
    return makeNNPtr<FontFactory>(FactoryAccessTag{}, std::move(loader), defaultFaceName);
}

NNPtr<FontFactory> FontFactory::create(const std::string& defaultFaceName) {
    return create(FontLoaders::createPlatformDefaultFontLoader(defaultFaceName), defaultFaceName);
}

FontFactory::FontFactory(FactoryAccessTag, NNPtr<const FontLoaders::FontLoader> loader,
                         const std::string& defaultFaceName)
    : FontFactory(std::move(loader), defaultFaceName) {}

FontFactory::FontFactory(NNPtr<const FontLoaders::FontLoader> loader, const std::string& defaultFaceName)
    : _fontLoader(std::move(loader))
    , _faces(std::make_unique<Internal::FaceCaches>())
    , _glyphs(std::make_unique<Internal::GlyphService>())
    , _colorGlyphs(new ColorGlyphs)
    , _defaultFaceName(defaultFaceName) {}

FontFactory::~FontFactory() = default;

FactoryCacheFigures FontFactory::getCacheFigures() const {
    return {_faces->files.getFigures(), _faces->faces.getFigures(), _glyphs->getBitmapFigures(),
            _glyphs->getImageFigures(), _glyphs->getOutlineFigures()};
}

void FontFactory::flush() {
    ++_resetCount;
    // Dependents go first: glyphs, then their faces, then the faces' files.
    _glyphs->clear();
    _colorGlyphs->flush();
    _faces->faces.clear();
    _faces->files.clear();
}

void FontFactory::reset(unsigned long maxFaceCount, unsigned long maxBitmapBytes) {
    // Makes all new caches before any takes effect, so that nothing changes if memory runs out. After the
    // exchanges, these objects hold the old entries and destroy them in the order of flush.
    decltype(Internal::FaceCaches::files)::Cache files(maxFaceCount, 0);
    decltype(Internal::FaceCaches::faces)::Cache faces(maxFaceCount, 0);
    Internal::GlyphService::Budget glyphs(maxBitmapBytes);
    ++_resetCount;
    _glyphs->exchange(glyphs);
    _faces->faces.exchange(faces);
    _faces->files.exchange(files);
}

NNPtr<const Gfx::FontFaceInfo>
FontFactory::substituteDefaultFaceName(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    return makeNNPtr<Internal::FontFaceInfo>(_defaultFaceName, faceInfo->isBold(), faceInfo->isItalic());
}

FontBytes FontFactory::loadFaceBytes(const FaceKey& faceInfo) const {
    if (faceInfo->getName().empty()) {
        return _fontLoader->loadDefaultFont(faceInfo->isBold(), faceInfo->isItalic());
    }
    return _fontLoader->loadFont(faceInfo);
}

FontBytes FontFactory::getFaceDataBytes(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    using Node = decltype(Internal::FaceCaches::files)::Node;
    return _faces->files.copy(faceInfo, [&] { return Node(loadFaceBytes(faceInfo), 0); });
}

std::shared_ptr<const FaceData>
FontFactory::getFaceData(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    const FontBytes exact = getFaceDataBytes(faceInfo);
    const Internal::FontFaceInfo request{faceInfo->getName(), faceInfo->isBold(), faceInfo->isItalic()};
    if (exact && Internal::mayUseExactStyle(request)) {
        return makeNNPtr<const FaceData>(FaceData{exact, GlyphTransform::None});
    }
    return Internal::findSimilarStyle(request, [&](bool bold, bool italic) {
        return getFaceDataBytes(makeNNPtr<Internal::FontFaceInfo>(request.getName(), bold, italic));
    });
}

FacePtr FontFactory::openFace(const FaceKey& faceInfo) const {
    std::shared_ptr<const FaceData> data = getFaceData(faceInfo);
    if (!data) {
        data = getFaceData(makeNNPtr<Internal::FontFaceInfo>("", faceInfo->isBold(), faceInfo->isItalic()));
    }
    if (!data) {
        throw FontLoaders::FontLoaderException("getFace() failed: cannot load font");
    }
    return makeNNPtr<FontFace>(Gfx::FactoryAccessTag{}, shared_from_this(), *data);
}

const NNPtr<const FontFace>& FontFactory::getFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    // Caches the face under the requested description even if it is the default face, so that the next
    // request is a hit.
    using Node = decltype(Internal::FaceCaches::faces)::Node;
    const auto& faces = _faces->faces;
    const Internal::RecursiveLock lock(faces.getMutex());
    return faces.getOrPut(faceInfo, [&] { return Node(openFace(faceInfo), 0); }).getValue();
}

NNPtr<const FontFace> FontFactory::shareFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    const Internal::RecursiveLock lock(_faces->faces.getMutex());
    return getFace(faceInfo);
}

Font FontFactory::getFont(const NNPtr<const Gfx::FontInfo>& fontInfo) const {
    return Font(Gfx::FactoryAccessTag{}, fontInfo, shareFace(fontInfo->getFontFaceInfo()));
}

NNPtr<const Gfx::FontMetrics> FontFactory::getFontMetrics(const NNPtr<const Gfx::FontInfo>& fontInfo) const {
    return makeNNPtr<Font>(getFont(fontInfo));
}

std::shared_ptr<const Font>
FontFactory::getDefaultFontForSymbol(unsigned int codePoint,
                                     const NNPtr<const Gfx::FontInfo>& fontInfo) const {
    const std::string family = Internal::findFallbackFamily(*this, codePoint);
    if (family.empty()) {
        return nullptr;
    }
    const auto style = fontInfo->getFontFaceInfo();
    const bool isBold = style->isBold();
    const bool isItalic = style->isItalic();
    const float size = fontInfo->getSize();
    const auto face = makeNNPtr<Internal::FontFaceInfo>(family, isBold, isItalic);
    return std::make_shared<const Font>(
        getFont(makeNNPtr<Internal::FontInfo>(face, size, fontInfo->getTextPositionType())));
}

const std::shared_ptr<const FT_BitmapGlyphRec_>& FontFactory::getBitmapGlyph(const BitmapGlyphInfo& info,
                                                                             NNPtr<const FontFace> face,
                                                                             bool flipVertically) const {
    assertFace(face, 342);
    return _glyphs->findBitmap(info, *face, flipVertically);
}

std::shared_ptr<const BitmapGlyphImageWithDeleter>
FontFactory::getGlyphBitmapWithSubpixels(const BitmapGlyph& glyph,
                                         const cinder::ColorAT<unsigned char>& color) const {
    return _glyphs->copyImage(glyph, color);
}

const std::shared_ptr<const Gfx::Path>& FontFactory::getOutlineGlyphPath(const GlyphInfo& info,
                                                                         NNPtr<const FontFace> face,
                                                                         Gfx::Painter& painter) const {
    assertFace(face, 433);
    return _glyphs->findPath(info, face, painter);
}

} // namespace Vell::FontEngine
