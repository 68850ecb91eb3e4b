#pragma once

#include <TextLayout/Private/AllocationWatch.h>
#include <TextLayout/Private/HarfBuzzHandles.h>

#include <hb.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace Vell::TextLayout {

/// How HarfBuzz shapes a face in one script, direction and language, with certain features.
struct ShapePlanKey {
    /// Forgets where features that are not set for a whole text begin and end.
    ShapePlanKey(const hb_segment_properties_t& keyProperties, std::vector<hb_feature_t> keyFeatures);

    hb_segment_properties_t properties;
    std::vector<hb_feature_t> features;

    bool operator==(const ShapePlanKey& other) const;
};

/// A glyph that is the same wherever its character stands.
struct FreeGlyph {
    std::uint16_t index;
    std::int32_t advance; ///< in font units
};

/// A plan that is made once for a face and a key. HarfBuzz keeps it as long as the face.
///
/// It also knows the characters that stand for themselves: no lookup of the plan looks at their glyphs, so
/// that they divide a text into parts that can be shaped one by one. The space is such a character in most
/// fonts, and so are the ideographs in theirs. The answers are kept, so the owner serialises the calls of
/// hasFreeGlyphs and findFreeGlyph.
class ShapePlan {
public:
    struct Font {
        hb_font_t* handle;
        std::atomic<bool>& isSpoiled; ///< becomes true if memory is short while HarfBuzz reads the font
    };

    /// `font` must outlive the plan. `id` distinguishes it from all other plans of the cache. Like all
    /// functions that read the font, it throws std::bad_alloc if memory is short, or was so before.
    ShapePlan(const Font& font, ShapePlanKey key, std::uint32_t id);

    const ShapePlanKey& getKey() const { return _key; }
    std::uint32_t getId() const { return _id; }

    /// Of its script and direction, see RunDependence.h.
    bool runsAgainstScript() const { return _runsAgainstScript; }
    bool mayDecompose() const { return _mayDecompose; }
    bool hasSyllables() const { return _hasSyllables; }
    bool mayJoin() const { return _mayJoin; }
    bool mayHaveIdeographs() const { return _mayHaveIdeographs; }
    /// The glyph that stands under marks without a base; 0 if there is none.
    std::uint16_t getDottedCircle() const { return _dottedCircle; }

    /// Replaces the characters of the buffer by their glyphs. `features` are those that the key was made
    /// from. Any number of threads may call it.
    void execute(hb_buffer_t* buffer, const std::vector<hb_feature_t>& features) const;

    /// Whether there may be characters that stand for themselves.
    bool hasFreeGlyphs() { return getReach() != nullptr; }
    /// Null if the character does not stand for itself. Valid as long as the plan.
    const FreeGlyph* findFreeGlyph(char32_t codePoint) {
        const std::size_t page = codePoint / pageSize;
        if (page < _pages.size() && _pages[page]) {
            const Entry& entry = (*_pages[page])[codePoint % pageSize];
            if (entry.answer != Answer::Unknown) {
                return entry.answer == Answer::Free ? &entry.glyph : nullptr;
            }
        }
        return findNewFreeGlyph(codePoint);
    }

private:
    enum class Answer : unsigned char { Unknown, Free, Bound };
    struct Entry {
        Answer answer = Answer::Unknown;
        FreeGlyph glyph{};
    };
    static constexpr std::size_t pageSize = 256;
    using Page = std::array<Entry, pageSize>;

    const FreeGlyph* findNewFreeGlyph(char32_t codePoint);
    void check(const AllocationWatch& watch) const;
    const hb_set_t* getReach() { return (_reach ? *_reach : findReach()).get(); }
    const HarfBuzzPtr<hb_set_t>& findReach();
    Entry examine(char32_t codePoint);

    hb_font_t* _font;
    std::atomic<bool>& _isSpoiled;
    ShapePlanKey _key;
    std::uint32_t _id;
    bool _runsAgainstScript;
    bool _mayDecompose;
    bool _hasSyllables;
    bool _mayJoin;
    bool _mayHaveIdeographs;
    std::uint16_t _dottedCircle;
    HarfBuzzPtr<hb_shape_plan_t> _plan;
    std::optional<HarfBuzzPtr<hb_set_t>>
        _reach; // found when it is needed; a null pointer if there is no telling
    std::vector<std::unique_ptr<Page>> _pages; // null until they are needed
};

} // namespace Vell::TextLayout
