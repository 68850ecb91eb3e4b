#include <TextLayout/Private/GlyphLookups.h>

#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// The element behind another one in an array of larger structures.
template <class T>
T* getNext(T* element, unsigned int stride) {
    using Byte = std::conditional_t<std::is_const_v<T>, const char, char>;
    return reinterpret_cast<T*>(reinterpret_cast<Byte*>(element) + stride);
}

/// Stops at the first character without a glyph, and returns how many have one.
unsigned int findGlyphs(hb_font_t* /*font*/, void* lookups, unsigned int count,
                        const hb_codepoint_t* character, unsigned int characterStride, hb_codepoint_t* glyph,
                        unsigned int glyphStride, void* /*userData*/) {
    for (unsigned int i = 0; i != count; ++i) {
        *glyph = static_cast<GlyphLookups*>(lookups)->findGlyph(*character);
        if (*glyph == 0) {
            return i;
        }
        character = getNext(character, characterStride);
        glyph = getNext(glyph, glyphStride);
    }
    return count;
}

void getAdvances(hb_font_t* /*font*/, void* lookups, unsigned int count, const hb_codepoint_t* glyph,
                 unsigned int glyphStride, hb_position_t* advance, unsigned int advanceStride,
                 void* /*userData*/) {
    for (unsigned int i = 0; i != count; ++i) {
        *advance = static_cast<GlyphLookups*>(lookups)->getAdvance(*glyph);
        glyph = getNext(glyph, glyphStride);
        advance = getNext(advance, advanceStride);
    }
}

HarfBuzzPtr<hb_font_funcs_t> makeFunctions() {
    HarfBuzzPtr<hb_font_funcs_t> functions(hb_font_funcs_create());
    if (functions.get() == hb_font_funcs_get_empty()) {
        throw std::bad_alloc();
    }
    hb_font_funcs_set_nominal_glyphs_func(functions.get(), findGlyphs, nullptr, nullptr);
    hb_font_funcs_set_glyph_h_advances_func(functions.get(), getAdvances, nullptr, nullptr);
    hb_font_funcs_make_immutable(functions.get());
    return functions;
}

} // namespace

GlyphLookups::~GlyphLookups() {
    _glyphs.clear();
    _advances.clear();
}

HarfBuzzPtr<hb_font_t> GlyphLookups::makeFont() {
    static const HarfBuzzPtr<hb_font_funcs_t> functions = makeFunctions();
    HarfBuzzPtr<hb_font_t> font(hb_font_create_sub_font(_font));
    if (font.get() == hb_font_get_empty()) {
        throw std::bad_alloc();
    }
    hb_font_set_funcs(font.get(), functions.get(), this, nullptr);
    hb_font_make_immutable(font.get());
    return font;
}

hb_codepoint_t GlyphLookups::findGlyph(hb_codepoint_t character) {
    if (character < characterCount) {
        const std::size_t number = character / Glyphs::pageSize;
        const Glyphs::Page* const known = _glyphs.find(number);
        if (const Glyphs::Page* const page = known != nullptr ? known : makeGlyphs(number)) {
            return (*page)[character % Glyphs::pageSize];
        }
    }
    return askForGlyph(character);
}

hb_position_t GlyphLookups::getAdvance(hb_codepoint_t glyph) {
    if (glyph < glyphCount) {
        const std::size_t number = glyph / Advances::pageSize;
        const Advances::Page* const known = _advances.find(number);
        if (const Advances::Page* const page = known != nullptr ? known : makeAdvances(number)) {
            return (*page)[glyph % Advances::pageSize];
        }
    }
    return hb_font_get_glyph_h_advance(_font, glyph);
}

/// Null if memory is short, which AllocationWatch notices: HarfBuzz calls this.
const GlyphLookups::Glyphs::Page* GlyphLookups::makeGlyphs(std::size_t page) {
    std::unique_ptr<Glyphs::Page> made(new (std::nothrow) Glyphs::Page());
    if (!made) {
        return nullptr;
    }
    auto character = static_cast<hb_codepoint_t>(page * Glyphs::pageSize);
    for (std::uint16_t& glyph : *made) {
        glyph = static_cast<std::uint16_t>(askForGlyph(character++));
    }
    return &_glyphs.put(page, std::move(made));
}

const GlyphLookups::Advances::Page* GlyphLookups::makeAdvances(std::size_t page) {
    std::unique_ptr<Advances::Page> made(new (std::nothrow) Advances::Page());
    if (!made) {
        return nullptr;
    }
    auto glyph = static_cast<hb_codepoint_t>(page * Advances::pageSize);
    for (hb_position_t& advance : *made) {
        advance = hb_font_get_glyph_h_advance(_font, glyph++);
    }
    return &_advances.put(page, std::move(made));
}

hb_codepoint_t GlyphLookups::askForGlyph(hb_codepoint_t character) const {
    hb_codepoint_t glyph = 0;
    return hb_font_get_nominal_glyph(_font, character, &glyph) != 0 ? glyph : 0;
}

} // namespace Vell::TextLayout
