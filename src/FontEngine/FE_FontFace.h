#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/FreeType.h>
#include <Gfx/Public/BasicMetrics.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Color.h>

#include FT_GLYPH_H

#include <memory>
#include <vector>

namespace Vell::FontEngine {

class BitmapGlyph;
class FontFactory;

namespace Internal {
class ColorFace;
class GlyphAccess;
struct KnownSize;
} // namespace Internal

/// The engine cannot fulfil a request although no library below it failed.
class VELL_API FontEngineException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    FontEngineException(const FontEngineException&) = default;
    FontEngineException& operator=(const FontEngineException&) = default;
    ~FontEngineException() override;
};

/// What a face is made from: a font file, and the synthetic styles to add because the file lacks them.
struct FaceData {
    NNPtr<const std::vector<unsigned char>> bytes; ///< the whole file, shared
    GlyphTransform transform;                      ///< applies to every glyph of the face
};

/// A font file, opened as a FreeType face in a FreeType library of its own, with its metrics and its
/// character map, which are computed once. FontFactory::getFace makes and shares faces. A face keeps its
/// bytes alive, but not its factory.
///
/// Threads: any number of threads may read the metrics. Only one thread at a time may use the FreeType face
/// behind getHandle. The glyph services below take a lock of the factory: one lock for bitmaps, another one
/// for outlines. So two threads must not use both services of one face at the same time.
class VELL_API FontFace : public std::enable_shared_from_this<FontFace> {
public:
    /// Opens the bytes. Throws FreeTypeException if FreeType fails or reading the charmap exceeds its bounds,
    /// and BadNumCastError if a character code does not fit into an unsigned int. Asserts that the file has a
    /// charmap.
    FontFace(Gfx::FactoryAccessTag, std::shared_ptr<const FontFactory> factory, FaceData faceData);
    ~FontFace();

    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    /// The FreeType face. Its `generic` field belongs to the client.
    const FontLoaders::FTFacePtr& getHandle() const { return _face; }
    GlyphTransform getTransform() const { return _faceData.transform; }
    FaceData getFaceData() const { return _faceData; }
    /// In ems. A face without an em size (a bitmap font) has infinite or NaN metrics.
    const Gfx::BasicMetrics& getBasicMetrics() const { return _basicMetrics; }
    /// Asserts that the factory still exists.
    const FontFactory& getFontFactory() const;
    /// Returns null after the factory was destroyed.
    std::shared_ptr<const FontFactory> shareFontFactory() const { return _fontFactory.lock(); }

    /// The factory's services of the same names, for this face. They return null when the factory's services
    /// do, and after the factory was destroyed.
    std::shared_ptr<const FT_BitmapGlyphRec_> getBitmapGlyph(const BitmapGlyphInfo& info,
                                                             bool flipVertically) const;
    std::shared_ptr<const Gfx::Path> getOutlineGlyphPath(const GlyphInfo& info, Gfx::Painter& painter) const;
    std::shared_ptr<const BitmapGlyphImageWithDeleter>
    getGlyphBitmapWithSubpixels(const BitmapGlyph& glyph, const cinder::ColorAT<unsigned char>& color) const;

    /// Only for this library's glyph services, which hold their lock while they use it.
    Internal::KnownSize& getKnownSize() const { return *_knownSize; }
    /// Only for this library's text painters.
    const Internal::GlyphAccess& getGlyphAccess() const { return *_glyphAccess; }
    /// Only for ColorGlyphs, under its lock. Null until somebody asks for colours.
    std::shared_ptr<Internal::ColorFace>& getColorFace() const { return _colorFace; }

private:
    // Each member depends on those above it: FreeType reads the face from the bytes.
    std::weak_ptr<const FontFactory> _fontFactory;
    std::shared_ptr<const Internal::GlyphAccess> _glyphAccess;
    FaceData _faceData;
    FontLoaders::FTLibraryPtr _library;
    FontLoaders::FTFacePtr _face;
    std::unique_ptr<Internal::KnownSize> _knownSize; // mutable state, because const services size the face
    Gfx::BasicMetrics _basicMetrics;
    mutable std::shared_ptr<Internal::ColorFace> _colorFace;
};

} // namespace Vell::FontEngine
