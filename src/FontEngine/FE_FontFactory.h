#pragma once

#include <FontEngine/FE_BitmapGlyphImage.h>
#include <FontEngine/FE_BitmapGlyphInfo.h>
#include <FontEngine/FE_CacheFigures.h>
#include <FontEngine/FE_FaceData.h>
#include <FontEngine/FE_Font.h>
#include <FontEngine/FE_FontFace.h>
#include <FontEngine/FE_GlyphInfo.h>
#include <FontLoaders/Public/FontLoader.h>
#include <Gfx/Public/FontMetrics.h>
#include <Gfx/Public/Painter.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Color.h>

#include FT_GLYPH_H

#include <memory>
#include <string>
#include <vector>

namespace Vell::FontEngine {

class BitmapGlyph;

namespace Internal {
struct FaceCaches;
class GlyphService;
} // namespace Internal

/// The entry to the library: makes faces and fonts from descriptions and renders their glyphs, each once.
///
///     const auto factory = FontFactory::create("DejaVu Sans");
///     const auto face = makeNNPtr<const Internal::FontFaceInfo>("DejaVu Serif", true, false);
///     const Font font = factory->getFont(
///         makeNNPtr<const Internal::FontInfo>(face, 14.0F, Gfx::TextPositionType::Normal));
///
/// Five caches, each in the order of its most recent use, keep font files, faces, glyph bitmaps, coloured
/// images and outline paths. They have no limits until `reset` sets some. Whatever was handed out stays valid
/// when a cache drops it, and when the factory ends: all of it is shared. Faces refer to their factory
/// weakly.
///
/// Threads: every lookup may be called from any thread. It holds the lock of its cache while it looks up,
/// makes and inserts, so an entry is made once; the locks are recursive, and the face cache's is taken before
/// that of the font files. A run of bitmaps ends under the lock of the bitmaps, also where a client's painter
/// or destructor ends it under another lock. `flush` and `reset` lock nobody out and need exclusive use of
/// the factory; only runs and glyphs may end on other threads meanwhile. One face must not be rendered by the
/// bitmap service and by the outline service at the same time, which size it under different locks.
///
/// Reentrancy: a client's loader and painter, and the destructors of its descriptions, font files and paths,
/// may call the factory, `flush` and `reset` included, on the thread that called them. Only a request whose
/// own entry they add, or push out again, is a failed assertion.
///
/// Errors: FontLoaderException, FreeTypeException, FontEngineException, BadNumCastError, std::bad_alloc, and
/// whatever a client's loader or painter throws. After an exception nothing is cached for that request and no
/// lock is held.
class VELL_API FontFactory : public Gfx::FontMetricsFactory,
                             public std::enable_shared_from_this<FontFactory> {
public:
    /// Keeps factories inside shared pointers: only `create` can make one.
    class FactoryAccessTag {
        friend class FontFactory;
        // User-provided, or `FactoryAccessTag{}` would be aggregate initialisation and open to all.
        explicit FactoryAccessTag() {} // NOLINT(modernize-use-equals-default)
    };

    FontFactory(FactoryAccessTag, NNPtr<const FontLoaders::FontLoader> loader,
                const std::string& defaultFaceName);
    ~FontFactory() override;

    FontFactory(const FontFactory&) = delete;
    FontFactory& operator=(const FontFactory&) = delete;

    /// A factory over the client's loader.
    static NNPtr<FontFactory> create(NNPtr<const FontLoaders::FontLoader> loader,
                                     const std::string& defaultFaceName);
    /// A factory over the fonts that are installed on the machine; the loader gets the same default face
    /// name.
    static NNPtr<FontFactory> create(const std::string& defaultFaceName);

    const FontLoaders::FontLoader& getFontLoader() const { return *_fontLoader; }

    /// The same style in the factory's default family.
    NNPtr<const Gfx::FontFaceInfo>
    substituteDefaultFaceName(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// The loader's answer for exactly this description, null included; for an empty name its default font of
    /// the style. Each description reaches the loader once while its answer stays cached.
    FontLoaders::FontBytes getFaceDataBytes(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// The file to open for a description and the styling to add to it, when another style of the family must
    /// serve; null when the loader has none of the family's styles.
    std::shared_ptr<const FaceData> getFaceData(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// The face of a description, or the loader's default face of its style. The reference is to the cached
    /// pointer: copy it at once. Throws FontLoaderException when the default face is missing, too.
    const NNPtr<const FontFace>& getFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// The same as a copy, made under the lock: for a factory that several threads use.
    NNPtr<const FontFace> shareFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// A new font over the cached face.
    Font getFont(const NNPtr<const Gfx::FontInfo>& fontInfo) const;

    /// The same as a shared object.
    NNPtr<const Gfx::FontMetrics> getFontMetrics(const NNPtr<const Gfx::FontInfo>& fontInfo) const override;

    /// A font for a character that `fontInfo` has no glyph for: the loader's family for the character's
    /// Unicode range in the same style, size and position. Null when the character lies in no range or no
    /// family serves it.
    std::shared_ptr<const Font> getDefaultFontForSymbol(unsigned int codePoint,
                                                        const NNPtr<const Gfx::FontInfo>& fontInfo) const;

    /// The bitmap of a glyph, its rows reversed on request; null when FreeType cannot size the face so (the
    /// failure is cached as well). Throws FreeTypeException when the glyph cannot be loaded or rendered, one
    /// of more than maxGlyphPixels, or of unreasonable work, among them. `face` must be the face that `info`
    /// describes: the flip and the face are no part of the key. The reference is to the cached pointer: copy
    /// it before another thread can evict it.
    const std::shared_ptr<const FT_BitmapGlyphRec_>&
    getBitmapGlyph(const BitmapGlyphInfo& info, NNPtr<const FontFace> face, bool flipVertically) const;

    /// The coloured image of an LCD glyph, composed over white. Throws FontEngineException for a bitmap of
    /// another pixel mode.
    std::shared_ptr<const BitmapGlyphImageWithDeleter>
    getGlyphBitmapWithSubpixels(const BitmapGlyph& glyph, const cinder::ColorAT<unsigned char>& color) const;

    /// The outline of a glyph in font units, y pointing down, built by `painter` and drawable by any painter
    /// of its kind; null when FreeType cannot size the face (cached as well) or the glyph has no outline. The
    /// painter's path is left empty. The reference is to the cached pointer: copy it before another thread
    /// can evict it.
    const std::shared_ptr<const Gfx::Path>&
    getOutlineGlyphPath(const GlyphInfo& info, NNPtr<const FontFace> face, Gfx::Painter& painter) const;

    /// What the caches hold and how they have served. Each is looked at under its own lock, one after the
    /// other: the five belong to one moment only while nobody else uses the factory. Changes nothing.
    FactoryCacheFigures getCacheFigures() const;

    /// Empties every cache and keeps the limits.
    void flush();

    /// Empties the caches of font files, faces, bitmaps and coloured images and limits them: font files and
    /// faces to `maxFaceCount` entries each, bitmaps and coloured images to `maxBitmapBytes` each; 0 means no
    /// limit. Outlines belong to no budget: their cache is neither emptied nor limited.
    void reset(unsigned long maxFaceCount, unsigned long maxBitmapBytes);

    /// For faces and text painters of this library: the glyph services without a copy of a key a glyph.
    const Internal::GlyphService& getGlyphService() const { return *_glyphs; }

private:
    FontFactory(NNPtr<const FontLoaders::FontLoader> loader, const std::string& defaultFaceName);

    FontLoaders::FontBytes loadFaceBytes(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;
    NNPtr<const FontFace> openFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    // Destroyed from the last to the first: glyphs, then faces, then the font files that they were made from.
    NNPtr<const FontLoaders::FontLoader> _fontLoader;
    std::unique_ptr<Internal::FaceCaches> _faces;
    std::unique_ptr<Internal::GlyphService> _glyphs;
    std::string _defaultFaceName;
};

} // namespace Vell::FontEngine
