#pragma once

#include <support/CountingLoader.h>
#include <support/RecordingPainter.h>

#include <FontEngine/FE_FontFactory.h>
#include <FontEngine/Renderer/FE_BitmapGlyphRun.h>
#include <FontEngine/Renderer/FE_OutlineGlyphRun.h>

#include <cstdint>
#include <memory>
#include <string>

namespace Vell::FontEngine {

/// A factory with many different families and a fallback family for symbols. The even families are for
/// bitmaps and the odd ones for outlines, because both services must not render one face at once.
class StressEngine {
public:
    static constexpr unsigned int familyCount = 24;

    /// Engines may share a loader, and so the bytes of the fonts.
    explicit StressEngine(std::shared_ptr<const Testing::CountingLoader> loader = makeLoader());

    static std::shared_ptr<Testing::CountingLoader> makeLoader();

    FontFactory& getFactory() const { return *_factory; }

    /// Does a round of work, which is the same in every engine for the same number: lays out texts in fonts
    /// of every family and colours their underscores. Returns a digest of all positions, pixels, images and
    /// paths.
    std::uint64_t work(unsigned int round) const;

    BitmapGlyphRun layOutBitmaps(unsigned int family, float size) const;
    OutlineGlyphRun layOutOutlines(unsigned int family, float size, Gfx::Painter& painter) const;
    Font getFont(unsigned int family, float size) const;

private:
    NNPtr<FontFactory> _factory;
};

/// Folds values into a number that depends on all of them and on their order.
class Digest {
public:
    void add(std::uint64_t value);
    void add(float value);
    void add(const FT_BitmapGlyphRec_& glyph);
    void add(const BitmapGlyphImage& image);
    void add(const BitmapGlyphRun& run);
    void add(const OutlineGlyphRun& run);
    /// Adds the images of the run's underscores, coloured by the font's face.
    void addImages(const BitmapGlyphRun& run, const Font& font);

    std::uint64_t get() const { return _value; }

private:
    std::uint64_t _value = 0;
};

} // namespace Vell::FontEngine
