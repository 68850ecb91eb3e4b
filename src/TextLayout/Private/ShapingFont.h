#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/AllocationWatch.h>
#include <TextLayout/Private/GlyphLookups.h>
#include <TextLayout/Private/HarfBuzzHandles.h>
#include <TextLayout/Private/ShapePlan.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace Vell::TextLayout {

/// A font file as HarfBuzz reads it, unhinted and in font units, with the plans that were made for it. It
/// keeps the bytes of the face alive.
class ShapingFont {
public:
    explicit ShapingFont(const FontEngine::FontFace& face);

    /// False for fonts that HarfBuzz cannot read, which are not in the format of TrueType and OpenType or
    /// have a charmap that only FreeType knows. Their characters have one glyph each.
    bool canShape() const { return _canShape; }

    hb_font_t* getHandle() const { return _fastFont.get(); }

    /// Whether memory was short while HarfBuzz read the font, so that a new one must take its place. Any
    /// thread may ask.
    bool isSpoiled() const { return _isSpoiled; }

    /// Throws std::bad_alloc if memory was short while the watch was there, or before. The font is spoiled
    /// then.
    void check(const AllocationWatch& watch);

    /// Whether it has so many plans that a new font should take its place: no plan is ever given up alone.
    bool hasManyPlans() const { return _plans.size() >= manyPlans; }

    /// The plan for a key, made on the first request. A new plan takes the next id. The owner serialises all
    /// calls.
    ShapePlan& getPlan(const ShapePlanKey& key, std::uint32_t& lastId);

private:
    ShapingFont(const FontEngine::FontFace& face, const AllocationWatch& watch);

    static constexpr std::size_t manyPlans = 64;

    NNPtr<const std::vector<unsigned char>> _bytes; // the unpacked web font does not keep them
    HarfBuzzPtr<hb_face_t> _face;
    HarfBuzzPtr<hb_font_t> _font;
    GlyphLookups _lookups;
    HarfBuzzPtr<hb_font_t> _fastFont; // with the lookups
    bool _canShape = false;
    std::atomic<bool> _isSpoiled{false};
    std::vector<std::unique_ptr<ShapePlan>> _plans;
};

} // namespace Vell::TextLayout
