#include <TextLayout/Private/PenPositions.h>

#include <TextLayout/Private/LineCharacters.h>

namespace Vell::TextLayout {

PenPositions::PenPositions(const ShapedText& text)
    : _text(text)
    , _pens(text.getGlyphs().size() / interval + 1) {
    _fonts.reserve(text.getFonts().size());
    for (const RunFont& font : text.getFonts()) {
        _fonts.push_back(measureFont(font));
    }
    for (const ShapedRun& run : text.getRuns()) {
        Pen pen;
        for (std::uint32_t glyph = run.glyphBegin; glyph < run.glyphEnd; ++glyph) {
            if (glyph % interval == 0) {
                _pens[glyph / interval] = pen;
            }
            add(pen, glyph);
        }
    }
}

double PenPositions::get(const ShapedRun& run, std::uint32_t glyph) const {
    std::uint32_t next = glyph / interval * interval;
    Pen pen;
    if (next == glyph && glyph == run.glyphEnd && glyph > run.glyphBegin) {
        next -= interval; // the position there belongs to the next run
    }
    if (next < run.glyphBegin) {
        next = run.glyphBegin;
    } else if (next > run.glyphBegin) {
        pen = _pens[next / interval];
    }
    for (; next < glyph; ++next) {
        add(pen, next);
    }
    return toUnits(run, pen);
}

double PenPositions::getWidth(const ShapedRun& run, const RunCluster& cluster) const {
    Pen pen;
    for (std::uint32_t glyph = cluster.glyphBegin; glyph < cluster.glyphEnd; ++glyph) {
        add(pen, glyph);
    }
    return toUnits(run, pen);
}

void PenPositions::add(Pen& pen, std::uint32_t glyph) const {
    const ShapedGlyph& added = _text.getGlyphs()[glyph];
    if (!isHiddenAt(_text.getText(), added.cluster)) {
        pen.fontUnits += added.advance;
        pen.spacings += added.isSpaced ? 1 : 0;
    }
}

double PenPositions::toUnits(const ShapedRun& run, const Pen& pen) const {
    const FontMeasures& font = _fonts[run.font];
    return static_cast<double>(pen.fontUnits) * font.fontUnit +
           static_cast<double>(pen.spacings) * font.letterSpacing;
}

} // namespace Vell::TextLayout
