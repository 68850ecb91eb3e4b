#pragma once

#include <support/ByteWriter.h>

#include <FontEngine/FE_BitmapGlyphPainter.h>

#include <cstddef>
#include <vector>

namespace Vell::Testing {

/// A copy of the arguments of drawGlyph.
struct DrawnGlyph {
    cinder::Vec2<float> position;
    unsigned int rows;
    unsigned int width;
    int pitch;
    unsigned char pixelMode;
    const unsigned char* buffer; ///< only for its identity; the image may be destroyed
    Bytes pixels;                ///< the rows in the order of memory: rows * |pitch| bytes
};

/// Records every image that it draws.
class RecordingGlyphPainter : public FontEngine::BitmapGlyphPainter {
public:
    ~RecordingGlyphPainter() override;

    const std::vector<DrawnGlyph>& getDrawnGlyphs() const { return _drawnGlyphs; }
    void clear() { _drawnGlyphs.clear(); }
    /// Throws InjectedError once, from the `number`-th call from now on (1 is the next one), or never for 0.
    void throwAt(std::size_t number) { _callsUntilThrow = number; }

    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position) override;

private:
    std::vector<DrawnGlyph> _drawnGlyphs;
    std::size_t _callsUntilThrow = 0;
};

} // namespace Vell::Testing
