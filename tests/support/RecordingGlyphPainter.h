#pragma once

#include <support/ByteWriter.h>

#include <FontEngine/FE_BitmapGlyphPainter.h>

#include <cstddef>
#include <vector>

namespace Vell::Testing {

/// A copy of what drawGlyph was given.
struct DrawnGlyph {
    cinder::Vec2<float> position;
    unsigned int rows;
    unsigned int width;
    int pitch;
    unsigned char pixelMode;
    const unsigned char* buffer; ///< identity only; the image may be gone
    Bytes pixels;                ///< the rows as they lie in the memory: rows * |pitch| bytes
};

/// Remembers every image that it is asked to draw.
class RecordingGlyphPainter : public FontEngine::BitmapGlyphPainter {
public:
    ~RecordingGlyphPainter() override;

    const std::vector<DrawnGlyph>& getDrawnGlyphs() const { return _drawnGlyphs; }
    void clear() { _drawnGlyphs.clear(); }
    /// Throws InjectedError from the `number`-th call from now on (1 is the next one), once; 0 for never.
    void throwAt(std::size_t number) { _callsUntilThrow = number; }

    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>& position) override;

private:
    std::vector<DrawnGlyph> _drawnGlyphs;
    std::size_t _callsUntilThrow = 0;
};

} // namespace Vell::Testing
