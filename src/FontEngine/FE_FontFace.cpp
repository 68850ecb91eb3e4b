#include <FontEngine/FE_FontFace.h>

#include <FontEngine/Color/Private/FE_ColorFace.h>
#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Private/FE_FaceSizing.h>
#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontEngine/Private/FE_GlyphService.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontLoaders/Public/FreeTypeMemory.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include FT_LCD_FILTER_H

#include <cmath>
#include <utility>

namespace Vell::FontEngine {

namespace {

Gfx::BasicMetrics makeBasicMetrics(Gfx::FactoryAccessTag tag, const FontLoaders::FTFacePtr& face,
                                   GlyphTransform transform) {
    const FontLoaders::FreeTypeOperation operation(FontLoaders::openingBounds);
    Gfx::CharMap charMap = Internal::makeCharMap(face, transform);
    const std::pair<float, float> capHeightAndStrikeOut = Internal::getCapHeightAndStrikeOutPosition(face);
    const auto unitsPerEM = static_cast<float>(face->units_per_EM);
    return Gfx::BasicMetrics(tag, static_cast<float>(face->height) / unitsPerEM,
                             static_cast<float>(face->ascender) / unitsPerEM,
                             std::fabs(static_cast<float>(face->descender) / unitsPerEM),
                             capHeightAndStrikeOut, std::move(charMap));
}

} // namespace

FontEngineException::~FontEngineException() = default;

FontFace::FontFace(Gfx::FactoryAccessTag tag, std::shared_ptr<const FontFactory> factory, FaceData faceData)
    : _fontFactory(factory)
    , _glyphAccess(derefNN(factory.get()).getGlyphService().shareAccess())
    , _faceData(std::move(faceData))
    , _library(FontLoaders::createFreeTypeLibrary())
    , _face(FontLoaders::createFontFace(_library, _faceData.bytes))
    , _knownSize(std::make_unique<Internal::KnownSize>())
    , _basicMetrics(makeBasicMetrics(tag, _face, _faceData.transform)) {
    // Ignores the error of a FreeType that was built without this filter. It renders LCD glyphs in its own
    // way.
    static_cast<void>(FT_Library_SetLcdFilter(_library.get(), FT_LCD_FILTER_LIGHT));
}

FontFace::~FontFace() = default;

const FontFactory& FontFace::getFontFactory() const {
    return derefNN(_fontFactory.lock().get());
}

std::shared_ptr<const FT_BitmapGlyphRec_> FontFace::getBitmapGlyph(const BitmapGlyphInfo& info,
                                                                   bool flipVertically) const {
    const auto factory = _fontFactory.lock();
    return factory ? factory->getGlyphService().copyBitmap(info, *shared_from_this(), flipVertically)
                   : nullptr;
}

std::shared_ptr<const Gfx::Path> FontFace::getOutlineGlyphPath(const GlyphInfo& info,
                                                               Gfx::Painter& painter) const {
    const auto factory = _fontFactory.lock();
    return factory ? factory->getGlyphService().copyPath(info, shared_from_this(), painter) : nullptr;
}

std::shared_ptr<const BitmapGlyphImageWithDeleter>
FontFace::getGlyphBitmapWithSubpixels(const BitmapGlyph& glyph,
                                      const cinder::ColorAT<unsigned char>& color) const {
    const auto factory = _fontFactory.lock();
    return factory ? factory->getGlyphService().copyImage(glyph, color) : nullptr;
}

} // namespace Vell::FontEngine
