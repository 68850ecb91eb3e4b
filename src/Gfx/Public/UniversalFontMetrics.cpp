#include <Gfx/Public/UniversalFontMetrics.h>

#include <Utils/Public/Utf8.h>

#include <utility>

namespace Vell::Gfx {

namespace {

/// The effect of a position type, as fractions of the description's size.
struct Position {
    float size;
    float baseLineShift;
};

Position getPosition(TextPositionType type) {
    switch (type) {
    case TextPositionType::Superscript:
        return {0.65F, 0.48F};
    case TextPositionType::Subscript:
        return {0.65F, -0.14F};
    case TextPositionType::Normal:
        break;
    }
    return {1.0F, 0.0F};
}

} // namespace

UniversalFontMetrics::UniversalFontMetrics(NNPtr<const FontInfo> fontInfo,
                                           NNPtr<const BasicMetrics> basicMetrics)
    : _fontInfo(std::move(fontInfo))
    , _basicMetrics(std::move(basicMetrics))
    , _fontSize(_fontInfo->getSize() * getPosition(_fontInfo->getTextPositionType()).size) {}

UniversalFontMetrics::~UniversalFontMetrics() = default;

void UniversalFontMetrics::forEachCharInText(boost::string_ref text, const NNPtr<const ExtFontInfo>&,
                                             const CallableRef<void(unsigned int)>& callback) {
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        callback(decodeUtf8(position, end));
    }
}

float UniversalFontMetrics::getCharWidth(unsigned int codePoint,
                                         const NNPtr<const ExtFontInfo>& extFontInfo) const {
    CharMap::GlyphIndexWithAdvance glyph = _basicMetrics->getCharMap()[codePoint];
    if (glyph.glyphIndex == 0) {
        trySubstituteGlyph(extFontInfo, codePoint, glyph);
    }
    return glyph.advance * _fontSize + extFontInfo->getLetterSpacing();
}

float UniversalFontMetrics::getTextWidth(boost::string_ref text,
                                         const NNPtr<const ExtFontInfo>& extFontInfo) const {
    float width = 0.0F;
    forEachCharInText(text, extFontInfo,
                      [&](unsigned int codePoint) { width += getCharWidth(codePoint, extFontInfo); });
    return width;
}

std::size_t UniversalFontMetrics::countCharsForWidth(char const*& begin, char const* end, float width,
                                                     const NNPtr<const ExtFontInfo>& extFontInfo) const {
    std::size_t count = 0;
    float used = 0.0F;
    while (begin != end) {
        const char* next = begin;
        used += getCharWidth(decodeUtf8(next, end), extFontInfo);
        if (!(used <= width)) {
            break;
        }
        begin = next;
        ++count;
    }
    return count;
}

float UniversalFontMetrics::getHeight() const {
    return _basicMetrics->getHeight() * _fontSize;
}

float UniversalFontMetrics::getAscent() const {
    return _basicMetrics->getAscender() * _fontSize;
}

float UniversalFontMetrics::getDescent() const {
    return _basicMetrics->getDescender() * _fontSize;
}

float UniversalFontMetrics::getLeading() const {
    return getHeight() - getAscent() - getDescent();
}

float UniversalFontMetrics::getCapHeight() const {
    return _basicMetrics->getCapHeight() * _fontSize;
}

float UniversalFontMetrics::getBaseLineShift() const {
    return _fontInfo->getSize() * getPosition(_fontInfo->getTextPositionType()).baseLineShift;
}

float UniversalFontMetrics::getStrikeOutPosition() const {
    return _basicMetrics->getStrikeOutPosition() * _fontSize;
}

} // namespace Vell::Gfx
