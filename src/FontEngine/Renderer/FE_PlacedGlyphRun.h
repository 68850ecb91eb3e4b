#pragma once

#include <FontEngine/FE_FontFace.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Vector.h>

#include <ft2build.h>
#include FT_IMAGE_H

#include <cstddef>
#include <vector>

namespace Vell::FontEngine {

namespace Internal {

class RecursiveMutex;
struct GlyphBox;

/// The union of glyph boxes. It starts as an inverted box of 32,000 pixels, so it is wrong for a run that
/// lies beyond these coordinates.
class BoxUnion {
public:
    /// Adds the control box that FreeType would return in whole pixels.
    void add(const GlyphBox& glyph);

    FT_BBox get() const { return _box.xMin > _box.xMax ? FT_BBox{0, 0, 0, 0} : _box; }

private:
    FT_BBox _box{32000, 32000, -32000, -32000};
};

/// The glyphs of a run that is being laid out. It keeps them alive in the same way as the finished run.
struct HeldGlyphs {
    /// Glyphs may be added as long as `capacity` is enough for all of them.
    explicit HeldGlyphs(std::size_t capacity) { glyphs.reserve(capacity); }

    /// Prepares for `count` more glyphs from the cache that `mutex` guards. Counts a reference to each glyph
    /// so far if the capacity is not enough, or if they come from another cache.
    void makeRoom(std::size_t count, const RecursiveMutex& mutex);

    BitmapGlyphRun finish() &&;

    std::vector<BitmapGlyph> glyphs;
    BoxUnion box;
    RunHoldPtr hold; // destroyed before the glyphs; null until the first append
};

} // namespace Internal

/// A glyph that a client's layout has chosen and placed.
struct PlacedGlyph {
    unsigned short glyphIndex; ///< FreeType's index of the glyph in the face
    /// Whether the next glyph has a different character or there is none. It is part of the bitmap's key, and
    /// decides whether an underscore joins the next one.
    bool isLast;
    /// The character that the glyph stands for. U+005F is rendered with sub-pixels. Always give a glyph the
    /// same character: a glyph that is cached with another one costs the run an allocation.
    unsigned int unicode;
    /// The pen position of the glyph's origin in device pixels divided by the ratio, y pointing down.
    cinder::Vec2<float> position;
};

/// Builds a run from glyphs that a client's layout, such as a shaper, has chosen and placed. The bitmaps come
/// from the factory's cache as fast as those of RasterTextPainter, which draws the run:
///
///     PlacedGlyphRun placed(devicePixelRatio, scale, /*flipVertically=*/false, glyphs.size());
///     placed.append(faceInfo, face, fontSize, glyphs.data(), glyphs.size());
///     textPainter.drawGlyphRun(std::move(placed).finish(), font, color, devicePixelRatio);
///
/// The glyphs of RasterTextPainter::createGlyphRun, placed where it places them, give the same run to the
/// bit.
///
/// Lifetime: the builder keeps the bitmaps alive, but no face, description or factory. It may outlive them.
/// Threads: one thread at a time may use a builder.
/// Reentrancy: a new glyph may evict others and so destroy a client's descriptions. Their destructors may use
/// the factory as its own services allow, but not the builder.
class VELL_API PlacedGlyphRun {
public:
    /// `devicePixelRatio`, `scale` and `flipVertically` are those of RasterTextPainter. `capacity` is the
    /// expected number of glyphs. A run may have more, at a higher cost.
    PlacedGlyphRun(float devicePixelRatio, const cinder::Vec2<float>& scale, bool flipVertically,
                   std::size_t capacity);
    PlacedGlyphRun(const PlacedGlyphRun&) = delete;
    PlacedGlyphRun& operator=(const PlacedGlyphRun&) = delete;
    ~PlacedGlyphRun();

    /// Adds `count` glyphs of one face, in this order. `faceInfo` is the description of the face and becomes
    /// part of the keys. `fontSize` is in logical units, without scale and ratio. The caller keeps `faceInfo`
    /// and `face` alive until the call returns. Faces of one run may belong to different factories.
    ///
    /// A glyph without a bitmap is not part of the run. A face whose factory was destroyed has no bitmaps.
    ///
    /// Takes the lock of the bitmap cache once for each 64 glyphs, so one call with many glyphs is faster
    /// than many calls.
    ///
    /// Errors: those of FontFactory::getBitmapGlyph. The glyphs before the one that failed are then in the
    /// run.
    void append(const NNPtr<const Gfx::FontFaceInfo>& faceInfo, const NNPtr<const FontFace>& face,
                float fontSize, const PlacedGlyph* glyphs, std::size_t count);

    /// Returns the run. The builder may only be destroyed from then on.
    BitmapGlyphRun finish() &&;

private:
    float _devicePixelRatio;
    cinder::Vec2<float> _scale;
    bool _flipVertically;
    Internal::HeldGlyphs _run;
};

} // namespace Vell::FontEngine
