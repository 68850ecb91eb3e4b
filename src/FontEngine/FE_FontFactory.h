#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>
#include <FontEngine/FE_CacheFigures.h>
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

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Vell::FontEngine {

class BitmapGlyph;
class ColorGlyphs;

namespace Internal {
struct FaceCaches;
class GlyphService;
} // namespace Internal

/// The entry point of the library: makes faces and fonts from descriptions, renders their glyphs, and caches
/// all of them.
///
///     const auto factory = FontFactory::create("DejaVu Sans");
///     const auto description = describeFont("DejaVu Serif", 14.0F, FontStyle{}.setBold());
///     const Font font = factory->getFont(description->getFontInfo());
///
/// Five caches hold font files, faces, glyph bitmaps, coloured images and outline paths, each in the order of
/// most recent use. They have no limits until `reset` sets them. A client that draws colour glyphs finds a
/// sixth one behind getColorGlyphs. Everything that the factory returns is
/// shared, so it stays valid when a cache drops it and when the factory is destroyed. Faces refer to their
/// factory weakly.
///
/// Threads: any thread may call any const function. It holds the lock of its cache while it looks up, makes
/// and inserts, so each entry is made once. The locks are recursive; the lock of the faces is taken before
/// the lock of the font files. Destroying a run of bitmaps takes the lock of the bitmaps, so do not destroy
/// one while you hold a lock that your loader, painters or destructors take. `flush` and `reset` need
/// exclusive use of the factory; other threads may only destroy runs and glyphs meanwhile. Rendering bitmaps
/// and taking outlines must not use one face at the same time, because they set its size under different
/// locks. The functions that return references into a cache are safe only while no other thread uses the
/// factory: shareFace() and the functions of FontFace return copies.
///
/// Reentrancy: a client's loader and painter, and the destructors of its descriptions, font files and paths,
/// may call the factory on the thread that called them, also `flush` and `reset` if no other thread uses the
/// factory. Such a call must not request the same entry, nor evict it before the request returns: both are
/// failed assertions.
///
/// Row order: all drawing with one factory must use the same row order (`flipVertically`), because the cache
/// does not distinguish the two.
///
/// Errors: the const functions throw FontLoaderException, FreeTypeException, FontEngineException,
/// BadNumCastError, std::bad_alloc, and whatever a client's loader or painter throws. A request that throws
/// caches nothing and releases its locks.
class VELL_API FontFactory : public Gfx::FontMetricsFactory,
                             public std::enable_shared_from_this<FontFactory> {
public:
    /// Only `create` can make a tag, so every factory lives in a shared pointer.
    class FactoryAccessTag {
        friend class FontFactory;
        // User-provided: otherwise `FactoryAccessTag{}` would be aggregate initialisation, open to everyone.
        explicit FactoryAccessTag() {} // NOLINT(modernize-use-equals-default)
    };

    FontFactory(FactoryAccessTag, NNPtr<const FontLoaders::FontLoader> loader,
                const std::string& defaultFaceName);
    ~FontFactory() override;

    FontFactory(const FontFactory&) = delete;
    FontFactory& operator=(const FontFactory&) = delete;

    /// Makes a factory that loads fonts with the client's loader, which also decides about the default font:
    /// only substituteDefaultFaceName() uses the name.
    static NNPtr<FontFactory> create(NNPtr<const FontLoaders::FontLoader> loader,
                                     const std::string& defaultFaceName);
    /// Makes a factory for the installed fonts. Its loader serves the named family as the default font.
    static NNPtr<FontFactory> create(const std::string& defaultFaceName);

    const FontLoaders::FontLoader& getFontLoader() const { return *_fontLoader; }

    /// Describes the same style in the factory's default family.
    NNPtr<const Gfx::FontFaceInfo>
    substituteDefaultFaceName(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// Returns the font file that the loader has for exactly this description, or null if it has none. An
    /// empty name means the loader's default font of the style. The answer is cached, even if it is null.
    FontLoaders::FontBytes getFaceDataBytes(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// Returns the file to open for a description, with the synthetic styles to add if another style of the
    /// family serves. Returns null if the loader has no style of the family.
    std::shared_ptr<const FaceData> getFaceData(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// Returns the face of a description, or the loader's default face of that style if the family is
    /// missing. The reference is to the pointer in the cache: copy it at once. Throws FontLoaderException if
    /// the default face is missing, too.
    const NNPtr<const FontFace>& getFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// Like getFace(), but returns a copy that is made under the lock. Use it if several threads share the
    /// factory.
    NNPtr<const FontFace> shareFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    /// Makes a font of the cached face. Throws like getFace().
    Font getFont(const NNPtr<const Gfx::FontInfo>& fontInfo) const;

    /// Like getFont(), but returns a shared object.
    NNPtr<const Gfx::FontMetrics> getFontMetrics(const NNPtr<const Gfx::FontInfo>& fontInfo) const override;

    /// Makes a fallback font for a character that the font of `fontInfo` lacks: the loader's family for the
    /// Unicode range of the character, in the same style, size and position. Returns null if the character is
    /// in no range or the loader has no family for the range. The font that it returns may lack the character
    /// as well.
    std::shared_ptr<const Font> getDefaultFontForSymbol(unsigned int codePoint,
                                                        const NNPtr<const Gfx::FontInfo>& fontInfo) const;

    /// Returns the bitmap of a glyph, with its rows bottom-up if `flipVertically` is set. Returns null if
    /// FreeType refuses the size, and caches the null. Throws FreeTypeException if FreeType cannot load or
    /// render the glyph, if it has more than maxGlyphPixels (2^28), and if the estimated time to render it is
    /// above a limit. `face` must be the face that `info` describes, because neither face nor flip is part of
    /// the key. The reference is to the pointer in the cache: copy it at once.
    const std::shared_ptr<const FT_BitmapGlyphRec_>&
    getBitmapGlyph(const BitmapGlyphInfo& info, NNPtr<const FontFace> face, bool flipVertically) const;

    /// Returns the coloured image of a glyph that was rendered in LCD mode, composed over white. Throws
    /// FontEngineException if the bitmap has another pixel mode.
    std::shared_ptr<const BitmapGlyphImageWithDeleter>
    getGlyphBitmapWithSubpixels(const BitmapGlyph& glyph, const cinder::ColorAT<unsigned char>& color) const;

    /// Returns the outline of a glyph in font units, y pointing down. `painter` builds it, and any painter of
    /// the same kind can draw it; the painter's own path ends empty. Returns null if FreeType refuses the
    /// size or the glyph has no outline, and caches the null. The reference is to the pointer in the cache:
    /// copy it at once.
    const std::shared_ptr<const Gfx::Path>&
    getOutlineGlyphPath(const GlyphInfo& info, NNPtr<const FontFace> face, Gfx::Painter& painter) const;

    /// Returns the colour glyphs: a service of its own, with a cache of its own that has its own limit.
    const ColorGlyphs& getColorGlyphs() const { return *_colorGlyphs; }
    ColorGlyphs& getColorGlyphs() { return *_colorGlyphs; }

    /// Returns the contents and statistics of the caches. It reads each cache under its own lock, one after
    /// the other, so the five describe one moment only if no other thread uses the factory.
    FactoryCacheFigures getCacheFigures() const;

    /// Empties all caches, that of the colour glyphs included, and keeps their limits.
    void flush();

    /// Empties the caches of font files, faces, bitmaps and coloured images, and limits them: font files and
    /// faces to `maxFaceCount` entries each, bitmaps and coloured images to `maxBitmapBytes` each. 0 means no
    /// limit. It neither empties nor limits the caches of outlines and of colour glyphs.
    void reset(unsigned long maxFaceCount, unsigned long maxBitmapBytes);

    /// How often flush() and reset() were called. As long as the number stays, getFace() returns the face
    /// that it returned before for a description, unless a limit has evicted that.
    std::uint64_t getResetCount() const { return _resetCount; }

    /// Only for the faces and text painters of this library.
    const Internal::GlyphService& getGlyphService() const { return *_glyphs; }

private:
    FontFactory(NNPtr<const FontLoaders::FontLoader> loader, const std::string& defaultFaceName);

    FontLoaders::FontBytes loadFaceBytes(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;
    NNPtr<const FontFace> openFace(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const;

    // Destroyed in reverse order: glyphs, then faces, then the font files that faces read from.
    NNPtr<const FontLoaders::FontLoader> _fontLoader;
    std::unique_ptr<Internal::FaceCaches> _faces;
    std::unique_ptr<Internal::GlyphService> _glyphs;
    std::unique_ptr<ColorGlyphs> _colorGlyphs;
    std::string _defaultFaceName;
    std::uint64_t _resetCount = 0;
};

} // namespace Vell::FontEngine
