#include <TextLayout/Private/ShapingFont.h>

#include <TextLayout/Private/HarfBuzzFace.h>

#include <hb-ot.h>

#include <algorithm>
#include <memory>
#include <new>

namespace Vell::TextLayout {

namespace {

/// Whether HarfBuzz finds characters of the engine's map. It does not know all charmaps that FreeType knows,
/// nor the one that FreeType makes from the names of the glyphs.
bool sharesCharMap(hb_font_t* font, const Gfx::CharMap& charMap) {
    bool hasAny = false;
    for (hb_codepoint_t code = U'!'; code <= U'~'; ++code) {
        hb_codepoint_t glyph = 0;
        const bool isMapped = charMap[code].glyphIndex != 0;
        if (isMapped && hb_font_get_nominal_glyph(font, code, &glyph) != 0) {
            return true;
        }
        hasAny |= isMapped;
    }
    return !hasAny;
}

HarfBuzzPtr<hb_font_t> makeFont(hb_face_t* face) {
    HarfBuzzPtr<hb_font_t> font(hb_font_create(face));
    if (font.get() == hb_font_get_empty()) {
        throw std::bad_alloc();
    }
    hb_font_make_immutable(font.get());
    return font;
}

} // namespace

ShapingFont::ShapingFont(const FontEngine::FontFace& face)
    : ShapingFont(face, AllocationWatch()) {}

ShapingFont::ShapingFont(const FontEngine::FontFace& face, const AllocationWatch& watch)
    : _bytes(face.getFaceData().bytes)
    , _face(makeHarfBuzzFace(face))
    , _font(makeFont(_face.get()))
    , _lookups(_font.get())
    , _fastFont(_lookups.makeFont()) {
    _canShape = hb_face_get_glyph_count(_face.get()) != 0 &&
                sharesCharMap(_font.get(), face.getBasicMetrics().getCharMap());
    if (watch.hasFailed()) {
        throw std::bad_alloc();
    }
}

void ShapingFont::check(const AllocationWatch& watch) {
    if (watch.hasFailed()) {
        _isSpoiled = true;
    }
    if (_isSpoiled) {
        throw std::bad_alloc();
    }
}

ShapePlan& ShapingFont::getPlan(const ShapePlanKey& key, std::uint32_t& lastId) {
    const auto found =
        std::find_if(_plans.begin(), _plans.end(), [&](const auto& plan) { return plan->getKey() == key; });
    if (found != _plans.end()) {
        return **found;
    }
    return *_plans.emplace_back(
        std::make_unique<ShapePlan>(ShapePlan::Font{getHandle(), _isSpoiled}, key, ++lastId));
}

} // namespace Vell::TextLayout
