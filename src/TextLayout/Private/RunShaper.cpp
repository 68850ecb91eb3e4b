#include <TextLayout/Private/RunShaper.h>

#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Private/WordShaper.h>

#include <algorithm>
#include <cmath>

namespace Vell::TextLayout {

RunShaper::RunShaper(ShapingCaches& caches, std::string_view text, const ByteSet& clusterStarts,
                     std::vector<ShapedGlyph>& glyphs)
    : _caches(caches)
    , _text(text)
    , _clusterStarts(clusterStarts)
    , _glyphs(glyphs)
    , _parts(text, clusterStarts, caches.scratch, glyphs) {}

void RunShaper::append(const RunToShape& run) {
    const SelectedFeatures& selected = run.features.select(run.part);
    if (!selected.holdForAll) {
        appendPartlySet(run);
    } else if (const KnownPlan& known = findPlan(run, selected); known.plan) {
        WordShaper({_caches, _text, _clusterStarts, _parts, _glyphs}, run, *known.plan).append();
    } else {
        appendUnshaped(run);
    }
}

const RunShaper::KnownPlan& RunShaper::findPlan(const RunToShape& run, const SelectedFeatures& selected) {
    const auto found = std::find_if(_knownPlans.begin(), _knownPlans.end(), [&](const KnownPlan& known) {
        return known.face == &run.face && known.features == &run.features &&
               known.selection == selected.version &&
               hb_segment_properties_equal(&known.properties, &run.properties) != 0;
    });
    if (found != _knownPlans.end()) {
        return *found;
    }
    KnownPlan& place = _knownPlans[_oldestPlan++ % _knownPlans.size()];
    return place = makePlan(run, selected);
}

RunShaper::KnownPlan RunShaper::makePlan(const RunToShape& run, const SelectedFeatures& selected) {
    KnownPlan known{&run.face, run.properties, &run.features, selected.version, _caches.getFont(run.face),
                    nullptr};
    if (known.font->canShape()) {
        known.plan = &_caches.getPlan(*known.font, {run.properties, selected.settings});
    }
    return known;
}

/// Shapes a run with settings for parts of it. Its words are not cached.
void RunShaper::appendPartlySet(const RunToShape& run) {
    const std::shared_ptr<ShapingFont> font = _caches.getFont(run.face);
    if (!font->canShape()) {
        appendUnshaped(run);
        return;
    }
    const auto findSettings = [&](const TextPart& piece) -> PartShaper::Settings {
        const std::vector<hb_feature_t>& settings = run.features.select(piece).settings;
        return {_caches.getPlan(*font, {run.properties, settings}), settings};
    };
    _parts.append(PartShaper::FindSettings(findSettings), run.part);
}

void RunShaper::appendUnshaped(const RunToShape& run) {
    const Gfx::CharMap& charMap = run.face.getBasicMetrics().getCharMap();
    const auto unitsPerEM = static_cast<float>(run.face.getHandle()->units_per_EM);
    const std::size_t first = _glyphs.size();
    for (std::uint32_t position = run.part.begin; position != run.part.end;) {
        const std::uint32_t behind = findCharacterBehind(_text, position);
        const auto entry = charMap[decodeAt(_text, position)];
        const float advance = entry.advance * unitsPerEM;
        ShapedGlyph glyph{};
        glyph.cluster = position;
        glyph.advance = std::isfinite(advance) ? static_cast<std::int32_t>(std::lround(advance)) : 0;
        glyph.index = entry.glyphIndex;
        glyph.isSpaced = true;
        glyph.isLast = isOtherCharacter(_text, position, behind);
        glyph.isSafeToBreak = true;
        _glyphs.push_back(glyph);
        position = behind;
    }
    if (run.isRightToLeft()) {
        std::reverse(_glyphs.begin() + static_cast<std::ptrdiff_t>(first), _glyphs.end());
    }
}

} // namespace Vell::TextLayout
