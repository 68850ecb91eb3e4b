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

/// Null if memory is short, which AllocationWatch notices: HarfBuzz calls this.
template <class Value, std::size_t codeCount, class Ask>
const typename LazyPages<Value, codeCount>::Page* makePage(LazyPages<Value, codeCount>& pages,
                                                           std::size_t number, const Ask& ask) {
    using Page = typename LazyPages<Value, codeCount>::Page;
    std::unique_ptr<Page> made(new (std::nothrow) Page());
    if (!made) {
        return nullptr;
    }
    auto code = static_cast<hb_codepoint_t>(number * made->size());
    for (Value& value : *made) {
        value = static_cast<Value>(ask(code++));
    }
    return &pages.put(number, std::move(made));
}

/// The answer from its page, which is made if need be. `ask` gives the answers, also those without a page.
template <class Value, std::size_t codeCount, class Ask>
auto find(LazyPages<Value, codeCount>& pages, hb_codepoint_t code, const Ask& ask) -> decltype(ask(code)) {
    constexpr std::size_t pageSize = LazyPages<Value, codeCount>::pageSize;
    if (code < codeCount) {
        const auto* const known = pages.find(code / pageSize);
        if (const auto* const page = known != nullptr ? known : makePage(pages, code / pageSize, ask)) {
            return (*page)[code % pageSize];
        }
    }
    return ask(code);
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
    return find(_glyphs, character, [this](hb_codepoint_t asked) {
        hb_codepoint_t glyph = 0;
        return hb_font_get_nominal_glyph(_font, asked, &glyph) != 0 ? glyph : 0;
    });
}

hb_position_t GlyphLookups::getAdvance(hb_codepoint_t glyph) {
    return find(_advances, glyph,
                [this](hb_codepoint_t asked) { return hb_font_get_glyph_h_advance(_font, asked); });
}

} // namespace Vell::TextLayout
