#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/ByteSet.h>
#include <TextLayout/Private/FeatureSettings.h>
#include <TextLayout/Private/PartShaper.h>
#include <TextLayout/Private/RunToShape.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Public/ShapedText.h>

#include <hb.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// Finds the glyphs of the runs of one text, with a plan for each face, script, direction and selection of
/// features.
class RunShaper {
public:
    /// The arguments must outlive the shaper. `clusterStarts` are those of the text.
    RunShaper(ShapingCaches& caches, std::string_view text, const ByteSet& clusterStarts,
              std::vector<ShapedGlyph>& glyphs);

    /// Appends the glyphs of a run in visual order.
    void append(const RunToShape& run);

private:
    /// The plan for a face, a script, a direction and a selection of features.
    struct KnownPlan {
        const FontEngine::FontFace* face = nullptr;
        hb_segment_properties_t properties{};
        const FeatureSettings* features = nullptr;
        std::uint32_t selection = 0;
        std::shared_ptr<ShapingFont> font;
        ShapePlan* plan = nullptr; // null if the font cannot be shaped
    };

    const KnownPlan& findPlan(const RunToShape& run, const SelectedFeatures& selected);
    KnownPlan makePlan(const RunToShape& run, const SelectedFeatures& selected);
    void appendUnshaped(const RunToShape& run);
    void appendPartlySet(const RunToShape& run);

    ShapingCaches& _caches;
    std::string_view _text;
    const ByteSet& _clusterStarts;
    std::vector<ShapedGlyph>& _glyphs;
    PartShaper _parts;
    std::array<KnownPlan, 4> _knownPlans; // most texts have one or two of them
    std::size_t _oldestPlan = 0;
};

} // namespace Vell::TextLayout
