#include <TextLayout/Private/RunShaper.h>

#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Private/WordShaper.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string_view>

namespace Vell::TextLayout {

namespace {

hb_segment_properties_t makeProperties(const RunToShape& run, hb_language_t language) {
    hb_segment_properties_t properties = HB_SEGMENT_PROPERTIES_DEFAULT;
    properties.direction = run.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR;
    const std::string_view script = run.script.getLetters();
    properties.script = hb_script_from_iso15924_tag(HB_TAG(script[0], script[1], script[2], script[3]));
    properties.language = language;
    return properties;
}

} // namespace

RunShaper::RunShaper(const TextToShape& text)
    : _text(text)
    , _parts(text) {}

void RunShaper::append(const RunToShape& run, PreparedStyle& style, FeatureSettings& features) {
    const SelectedFeatures& selected = features.select(run.part);
    if (!selected.holdForAll) {
        appendPartlySet(run, style.language, features);
    } else if (const PlanTable::Entry& known = findPlan(run, style, selected); known.plan != nullptr) {
        WordShaper({_text, _parts}, run, *known.plan).append();
    } else {
        appendUnshaped(run);
    }
}

const PlanTable::Entry& RunShaper::findPlan(const RunToShape& run, PreparedStyle& style,
                                            const SelectedFeatures& selected) {
    PlanTable& table = findTable(run, style, selected);
    const PlanTable::Entry* const known = table.find(run);
    return known != nullptr ? *known : table.add(makePlan(run, style.language, selected));
}

PlanTable& RunShaper::findTable(const RunToShape& run, PreparedStyle& style,
                                const SelectedFeatures& selected) {
    if (!style.hasPartialFeatures && (!style.plans.isFull() || style.plans.find(run) != nullptr)) {
        return style.plans;
    }
    if (_selectingStyle != &style || _selection != selected.version || _plansOfSelection.isFull()) {
        _plansOfSelection.clear();
        _selectingStyle = &style;
        _selection = selected.version;
    }
    return _plansOfSelection;
}

PlanTable::Entry RunShaper::makePlan(const RunToShape& run, hb_language_t language,
                                     const SelectedFeatures& selected) {
    PlanTable::Entry made{run.face, run.script, run.isRightToLeft, _text.caches.getFont(*run.face), nullptr};
    if (made.font->canShape()) {
        made.plan = &_text.caches.getPlan(*made.font, {makeProperties(run, language), selected.settings});
    }
    return made;
}

/// Shapes a run with settings for parts of it. Its words are not cached.
void RunShaper::appendPartlySet(const RunToShape& run, hb_language_t language, FeatureSettings& features) {
    const std::shared_ptr<ShapingFont> font = _text.caches.getFont(*run.face);
    if (!font->canShape()) {
        appendUnshaped(run);
        return;
    }
    const hb_segment_properties_t properties = makeProperties(run, language);
    const auto findSettings = [&](const TextPart& piece) -> PartShaper::Settings {
        const std::vector<hb_feature_t>& settings = features.select(piece).settings;
        return {_text.caches.getPlan(*font, {properties, settings}), settings};
    };
    _parts.append(PartShaper::FindSettings(findSettings), run.part);
}

void RunShaper::appendUnshaped(const RunToShape& run) {
    const Gfx::CharMap& charMap = run.face->getBasicMetrics().getCharMap();
    const auto unitsPerEM = static_cast<float>(run.face->getHandle()->units_per_EM);
    const std::size_t first = _text.glyphs.size();
    for (std::uint32_t position = run.part.begin; position != run.part.end;) {
        const std::uint32_t behind = findCharacterBehind(_text.text, position);
        const auto entry = charMap[decodeAt(_text.text, position)];
        const float advance = entry.advance * unitsPerEM;
        ShapedGlyph glyph{};
        glyph.cluster = position;
        glyph.advance = std::isfinite(advance) ? static_cast<std::int32_t>(std::lround(advance)) : 0;
        glyph.index = entry.glyphIndex;
        glyph.isSpaced = true;
        glyph.isLast = isOtherCharacter(_text.text, position, behind);
        glyph.isSafeToBreak = true;
        _text.glyphs.push_back(glyph);
        position = behind;
    }
    if (run.isRightToLeft) {
        std::reverse(_text.glyphs.begin() + static_cast<std::ptrdiff_t>(first), _text.glyphs.end());
    }
}

} // namespace Vell::TextLayout
