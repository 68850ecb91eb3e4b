#pragma once

#include <FontEngine/FE_BitmapGlyphImage.h>
#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_FaceData.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/FreeType.h>
#include <Gfx/Public/BasicMetrics.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <cinder/Color.h>

#include FT_GLYPH_H

#include <memory>

namespace Vell::FontEngine {

class BitmapGlyph;
class FontFactory;

namespace Internal {
class GlyphDoor;
struct KnownSize;
} // namespace Internal

/// One font file, opened as a FreeType face in a FreeType library of its own, with its metrics and its
/// character map computed once. Made by FontFactory::getFace and shared; it keeps its bytes alive but not its
/// factory.
///
/// Threads: the metrics may be read by any number of threads. The FreeType face behind getHandle belongs to
/// one thread at a time. The glyph services below are locked in the factory, bitmaps and outlines each by a
/// lock of their own: one face must not be drawn from two threads through both at once.
class VELL_API FontFace : public std::enable_shared_from_this<FontFace> {
public:
    /// Opens the bytes. Throws FreeTypeException when FreeType cannot, BadNumCastError for character codes
    /// that no unsigned int holds.
    FontFace(Gfx::FactoryAccessTag, std::shared_ptr<const FontFactory> factory, FaceData faceData);
    ~FontFace();

    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    /// The FreeType face. Its `generic` field is left to the client.
    const FontLoaders::FTFacePtr& getHandle() const { return _face; }
    GlyphTransform getTransform() const { return _faceData.transform; }
    FaceData getFaceData() const { return _faceData; }
    /// In ems. A face without an em size (bitmap fonts) has infinite or not-a-number metrics.
    const Gfx::BasicMetrics& getBasicMetrics() const { return _basicMetrics; }
    /// Asserts that the factory still exists.
    const FontFactory& getFontFactory() const;
    /// Null when the factory has gone.
    std::shared_ptr<const FontFactory> shareFontFactory() const { return _fontFactory.lock(); }

    /// The services of the factory for this face; null when the factory has gone, and where the services say
    /// so.
    std::shared_ptr<const FT_BitmapGlyphRec_> getBitmapGlyph(const BitmapGlyphInfo& info,
                                                             bool flipVertically) const;
    std::shared_ptr<const Gfx::Path> getOutlineGlyphPath(const GlyphInfo& info, Gfx::Painter& painter) const;
    std::shared_ptr<const BitmapGlyphImageWithDeleter>
    getGlyphBitmapWithSubpixels(const BitmapGlyph& glyph, const cinder::ColorAT<unsigned char>& color) const;

    // For the services and painters of this library alone.

    /// Under the locks of the services.
    Internal::KnownSize& getKnownSize() const { return *_knownSize; }
    const Internal::GlyphDoor& getGlyphDoor() const { return *_glyphDoor; }

private:
    // Declared in the order in which they depend on each other: FreeType reads the face from the bytes.
    std::weak_ptr<const FontFactory> _fontFactory;
    std::shared_ptr<const Internal::GlyphDoor> _glyphDoor;
    FaceData _faceData;
    FontLoaders::FTLibraryPtr _library;
    FontLoaders::FTFacePtr _face;
    std::unique_ptr<Internal::KnownSize> _knownSize; // changes with the face, which const services size
    Gfx::BasicMetrics _basicMetrics;
};

} // namespace Vell::FontEngine
