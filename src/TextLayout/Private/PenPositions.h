#pragma once

#include <TextLayout/Private/FontMeasures.h>
#include <TextLayout/Private/RunClusters.h>
#include <TextLayout/Public/ShapedText.h>

#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// Where the pen stands before each glyph of a text, at a cost of a quarter of a byte a glyph: a position is
/// stored for every 64th glyph, and the advances behind it are added. They are added in font units, so all
/// sums of the same glyphs are equal. Hidden characters (LineCharacters.h) have no width.
class PenPositions {
public:
    explicit PenPositions(const ShapedText& text);

    /// The distance from the left end of the run to the glyph, in the units of the font size. `glyph` may be
    /// the end of the run's glyphs.
    double get(const ShapedRun& run, std::uint32_t glyph) const;

    double getWidth(const ShapedRun& run) const { return get(run, run.glyphEnd); }
    /// Does not depend on the stored positions. Takes linear time in the number of the cluster's glyphs.
    double getWidth(const ShapedRun& run, const RunCluster& cluster) const;

    const FontMeasures& getFont(const ShapedRun& run) const { return _fonts[run.font]; }

private:
    struct Pen {
        std::int64_t fontUnits = 0;
        std::int64_t spacings = 0;
    };

    static constexpr std::uint32_t interval = 64;

    void add(Pen& pen, std::uint32_t glyph) const;
    double toUnits(const ShapedRun& run, const Pen& pen) const;

    const ShapedText& _text;
    std::vector<FontMeasures> _fonts;
    std::vector<Pen> _pens; ///< of the glyphs 0, 64, 128..., from the left end of their runs
};

} // namespace Vell::TextLayout
