#include <support/RecordingGlyphPainter.h>

#include <support/InjectedError.h>

#include <cstdlib>

namespace Vell::Testing {

namespace {

Bytes copyPixels(const FontEngine::BitmapGlyphImage& image) {
    if (image.buffer == nullptr) {
        return {};
    }
    const std::size_t size = std::size_t(image.rows) * static_cast<std::size_t>(std::abs(image.pitch));
    return Bytes(image.buffer, image.buffer + size);
}

} // namespace

RecordingGlyphPainter::~RecordingGlyphPainter() = default;

void RecordingGlyphPainter::drawGlyph(const FontEngine::BitmapGlyphImage& image,
                                      const cinder::Vec2<float>& position) {
    if (_callsUntilThrow != 0 && --_callsUntilThrow == 0) {
        throw InjectedError();
    }
    _drawnGlyphs.push_back(
        {position, image.rows, image.width, image.pitch, image.pixelMode, image.buffer, copyPixels(image)});
}

} // namespace Vell::Testing
