#include "GlyphSet.h"

#include "RenamedFont.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace Vell::Benchmarks {

namespace {

constexpr const char* mathFont = "/usr/share/fonts/truetype/dejavu/DejaVuMathTeXGyre.ttf";

/// The characters '!' to '~', then the first two of Latin-1.
unsigned int getCode(std::size_t i) {
    constexpr std::size_t asciiCount = '~' - '!' + 1;
    return static_cast<unsigned int>(i < asciiCount ? '!' + i : 0xA1 + (i - asciiCount));
}

bool areEqual(const FT_Bitmap& a, const FT_Bitmap& b) {
    return a.rows == b.rows && a.width == b.width && a.pitch == b.pitch &&
           std::equal(a.buffer, a.buffer + static_cast<std::size_t>(std::abs(a.pitch)) * a.rows, b.buffer);
}

} // namespace

const HintedFont& getBytecodeFont() {
    static const HintedFont font{"bytecode", readFontFile(getEnglish().fontFile), FT_LOAD_NO_BITMAP};
    return font;
}

const HintedFont& getAutoHintedFont() {
    static const HintedFont font{"auto-hinter",
                                 renameFamily(*readFontFile(getEnglish().fontFile), "Yu Gothic"),
                                 FT_LOAD_NO_BITMAP | FT_LOAD_FORCE_AUTOHINT};
    return font;
}

const HintedFont& getUnhintedFont() {
    static const HintedFont font{"unhinted", readFontFile(mathFont), FT_LOAD_NO_BITMAP};
    return font;
}

GlyphSet::GlyphSet(const HintedFont& font, unsigned int sizeCount)
    : _engine(font.bytes)
    , _sizeCount(sizeCount)
    , _loadFlags(font.loadFlags)
    , _library(FontLoaders::createFreeTypeLibrary())
    , _face(FontLoaders::createFontFace(_library, font.bytes)) {
    for (std::size_t i = 0; i < glyphCount; ++i) {
        _glyphs[i] = FT_Get_Char_Index(_face.get(), getCode(i));
    }
    sizeFace(0);
}

std::shared_ptr<const FT_BitmapGlyphRec_> GlyphSet::getFromEngine(std::size_t i) const {
    // The character is 'x' for all glyphs: the engine joins underscores, which FreeType does not.
    const FontEngine::BitmapGlyphInfo key(_engine.faceInfo, FT_RENDER_MODE_NORMAL, _glyphs[i], 'x',
                                          getSize(i), {1.0F, 1.0F}, 1.0F, 0, true,
                                          FontEngine::GlyphTransform::None);
    return _engine.factory->getBitmapGlyph(key, _engine.font.getFace(), false);
}

FT_Glyph GlyphSet::renderByFreeType(std::size_t i) const {
    FT_Glyph glyph = nullptr;
    if (FT_Load_Glyph(_face.get(), _glyphs[i], _loadFlags) != 0 || FT_Get_Glyph(_face->glyph, &glyph) != 0 ||
        FT_Glyph_To_Bitmap(&glyph, FT_RENDER_MODE_NORMAL, nullptr, 1) != 0) {
        throw std::runtime_error("FreeType cannot render a glyph");
    }
    return glyph;
}

void GlyphSet::sizeFace(std::size_t i) const {
    FT_Set_Char_Size(_face.get(), 0, static_cast<FT_F26Dot6>(getSize(i) * 64.0F), 72, 0);
}

bool GlyphSet::agreesAbout(std::size_t i) const {
    sizeFace(i);
    const FT_Glyph glyph = renderByFreeType(i);
    const bool isSame = areEqual(reinterpret_cast<FT_BitmapGlyph>(glyph)->bitmap, getFromEngine(i)->bitmap);
    FT_Done_Glyph(glyph);
    return isSame;
}

bool GlyphSet::agrees() const {
    for (std::size_t i = 0; i < glyphCount; ++i) {
        if (_glyphs[i] == 0 || !agreesAbout(i)) {
            return false;
        }
    }
    _engine.factory->reset(0, 0);
    return true;
}

} // namespace Vell::Benchmarks
