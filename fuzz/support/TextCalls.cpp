#include <fuzz/support/TextCalls.h>

#include <fuzz/support/Finding.h>
#include <fuzz/support/GlyphRules.h>

#include <FontEngine/Renderer/FE_RasterTextPainter.h>
#include <FontEngine/Renderer/FE_VectorTextPainter.h>
#include <Utils/Public/Utf8.h>
#include <support/RecordingPainter.h>

#include <cstddef>
#include <set>

namespace Vell::Fuzz {

namespace {

std::size_t countCharacters(boost::string_ref text) {
    const char* position = text.data();
    const char* const end = position + text.size();
    std::size_t count = 0;
    while (position != end) {
        const unsigned int codePoint = decodeUtf8(position, end);
        require(codePoint <= 0x10FFFF, "a character is a Unicode code point");
        require(codePoint < 0xD800 || codePoint > 0xDFFF, "a surrogate is not a character");
        ++count;
    }
    return count;
}

/// Checks every image once. Keeps none of them, since they may be many and large.
class CheckingGlyphPainter : public FontEngine::BitmapGlyphPainter {
public:
    std::size_t countGlyphs() const { return _count; }

    void drawGlyph(const FontEngine::BitmapGlyphImage& image, const cinder::Vec2<float>&) override {
        ++_count;
        if (_seen.insert(image.buffer).second) {
            checkPixels(image);
        }
    }

private:
    std::size_t _count = 0;
    std::set<const unsigned char*> _seen;
};

boost::string_ref makeView(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

} // namespace

void drawRaster(const std::string& text, const Testing::ExtFontInfoPtr& extFontInfo,
                const FontEngine::Font& font, const TextPlace& place) {
    constexpr cinder::ColorAT<unsigned char> color(200, 100, 0, 255);
    Testing::RecordingPainter painter;
    painter.setTransform(place.transform);
    CheckingGlyphPainter glyphPainter;
    FontEngine::RasterTextPainter(painter, glyphPainter, place.isFlipped)
        .drawText(text, extFontInfo, font, color, place.devicePixelRatio);
    require(painter.getStackDepth() == 0, "the raster painter pops every transform that it pushes");
    require(glyphPainter.countGlyphs() <= countCharacters(text), "a character has at most one bitmap");
}

void drawVector(const std::string& text, const Testing::ExtFontInfoPtr& extFontInfo,
                const FontEngine::Font& font, const TextPlace& place) {
    Testing::RecordingPainter painter;
    painter.setTransform(place.transform);
    FontEngine::VectorTextPainter(painter).drawText(text, extFontInfo, font);
    require(painter.getStackDepth() == 0, "the vector painter pops every transform that it pushes");
    require(painter.getDrawnPaths().size() <= countCharacters(text), "a character has at most one path");
    for (const Testing::DrawnPath& drawn : painter.getDrawnPaths()) {
        checkPath(Testing::RecordedPath(drawn.segments));
    }
}

void measureLine(const Gfx::FontMetrics& metrics) {
    volatile float sum = 0.0F; // the compiler must not remove the calls
    for (const float length :
         {metrics.getHeight(), metrics.getAscent(), metrics.getDescent(), metrics.getLeading(),
          metrics.getCapHeight(), metrics.getBaseLineShift(), metrics.getStrikeOutPosition()}) {
        sum = sum + length;
    }
}

void checkCountedChars(const std::string& text, float width, const Testing::ExtFontInfoPtr& extFontInfo,
                       const Gfx::FontMetrics& metrics) {
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* position = begin;
    const std::size_t count = metrics.countCharsForWidth(position, end, width, extFontInfo);
    require(begin <= position && position <= end, "counting stays within the text");

    const boost::string_ref taken = makeView(begin, position);
    require(count == countCharacters(taken), "the count is the number of characters passed");
    require(taken.empty() || metrics.getTextWidth(taken, extFontInfo) <= width, "the counted characters fit");
    if (position != end) {
        decodeUtf8(position, end);
        const float longer = metrics.getTextWidth(makeView(begin, position), extFontInfo);
        require(!(longer <= width), "one more character would not fit");
    }
}

} // namespace Vell::Fuzz
