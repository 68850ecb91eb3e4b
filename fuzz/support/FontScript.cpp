#include <fuzz/support/FontScript.h>

#include <iterator>

namespace Vell::Fuzz {

namespace {

constexpr Gfx::TextPositionType positions[] = {
    Gfx::TextPositionType::Normal, Gfx::TextPositionType::Superscript, Gfx::TextPositionType::Subscript,
    Gfx::TextPositionType::Normal};

constexpr FT_Render_Mode renderModes[] = {FT_RENDER_MODE_NORMAL, FT_RENDER_MODE_LCD, FT_RENDER_MODE_LIGHT,
                                          FT_RENDER_MODE_MONO, FT_RENDER_MODE_LCD_V};

// The engine joins underscores, and hints the others differently in some families.
constexpr unsigned int characters[] = {'A', '_', 'r', '*', '0', 0x416};

cinder::Vec2<float> takeFactorPair(ByteReader& reader) {
    const float x = reader.takeFactor();
    const float y = reader.takeFactor();
    return {x, y};
}

} // namespace

FontScript::FontScript(ByteReader& reader) {
    const unsigned int flags = reader.takeU8();
    isBold = (flags & 1U) != 0;
    isItalic = (flags & 2U) != 0;
    isFlipped = (flags & 4U) != 0;
    isLast = (flags & 8U) != 0;
    position = positions[flags >> 4 & 3U];
    renderMode = renderModes[reader.takeU8() % std::size(renderModes)];
    fontSize = reader.takeMeasure();
    scale = takeFactorPair(reader);
    devicePixelRatio = reader.takeFactor();
    offset = reader.takeU8();
    character = characters[reader.takeU8() % std::size(characters)];
    for (unsigned int& glyph : glyphs) {
        glyph = reader.takeU16();
    }
    services = reader.takeU8();
}

FontEngine::BitmapGlyphInfo FontScript::makeKey(const FontEngine::FontFace& face,
                                                const NNPtr<const Gfx::FontFaceInfo>& faceInfo,
                                                unsigned long glyphIndex) const {
    return FontEngine::BitmapGlyphInfo(faceInfo, renderMode, glyphIndex, character, fontSize, scale,
                                       devicePixelRatio, offset, isLast, face.getTransform());
}

} // namespace Vell::Fuzz
