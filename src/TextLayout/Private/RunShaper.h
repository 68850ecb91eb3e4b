#pragma once

#include <TextLayout/Private/FeatureSettings.h>
#include <TextLayout/Private/PartShaper.h>
#include <TextLayout/Private/PreparedStyle.h>
#include <TextLayout/Private/RunToShape.h>
#include <TextLayout/Private/TextToShape.h>

#include <hb.h>

#include <cstdint>

namespace Vell::TextLayout {

/// Finds the glyphs of the runs of one text, with a plan for each face, script, direction and selection of
/// features. Requires the lock.
class RunShaper {
public:
    explicit RunShaper(const TextToShape& text);

    /// Appends the glyphs of a run in visual order. `features` are those of the style.
    void append(const RunToShape& run, PreparedStyle& style, FeatureSettings& features);

    /// For when there are no more runs.
    void close() noexcept { _parts.close(); }

private:
    const PlanTable::Entry& findPlan(const RunToShape& run, PreparedStyle& style,
                                     const SelectedFeatures& selected);
    PlanTable& findTable(const RunToShape& run, PreparedStyle& style, const SelectedFeatures& selected);
    PlanTable::Entry makePlan(const RunToShape& run, hb_language_t language,
                              const SelectedFeatures& selected);
    void appendUnshaped(const RunToShape& run);
    void appendPartlySet(const RunToShape& run, hb_language_t language, FeatureSettings& features);

    TextToShape _text;
    PartShaper _parts;

    /// The plans of the selection that was used last, for a style that has settings for parts of the text.
    PlanTable _plansOfSelection;
    const PreparedStyle* _selectingStyle = nullptr;
    std::uint32_t _selection = 0;
};

} // namespace Vell::TextLayout
