#pragma once

#include <TextLayout/Private/HarfBuzzHandles.h>
#include <TextLayout/Private/LazyPages.h>

#include <hb.h>

#include <cstddef>
#include <cstdint>

namespace Vell::TextLayout {

/// The glyphs of characters and the advances of glyphs, as HarfBuzz finds them in a font. They take a good
/// part of the time in which it shapes simple scripts, so the answers are kept. Any number of threads may
/// ask.
class GlyphLookups {
public:
    /// `font` must outlive the object, and not change.
    explicit GlyphLookups(hb_font_t* font)
        : _font(font) {}
    ~GlyphLookups();
    GlyphLookups(const GlyphLookups&) = delete;
    GlyphLookups& operator=(const GlyphLookups&) = delete;

    /// The same font, with these lookups, which must outlive it. Throws std::bad_alloc if memory is short.
    HarfBuzzPtr<hb_font_t> makeFont();

    /// 0 if the font lacks the character.
    hb_codepoint_t findGlyph(hb_codepoint_t character);
    /// In font units.
    hb_position_t getAdvance(hb_codepoint_t glyph);

private:
    static constexpr std::size_t characterCount = 0x20000; // the planes with almost all characters of texts
    static constexpr std::size_t glyphCount = 0x10000;
    using Glyphs = LazyPages<std::uint16_t, characterCount>;
    using Advances = LazyPages<hb_position_t, glyphCount>;

    hb_font_t* _font;
    Glyphs _glyphs;
    Advances _advances;
};

} // namespace Vell::TextLayout
