#include <TextLayout/Private/TextShaping.h>

#include <TextLayout/Private/ClusterFonts.h>
#include <TextLayout/Private/FeatureSettings.h>
#include <TextLayout/Private/RunShaper.h>
#include <TextLayout/Private/StyleGroups.h>
#include <TextLayout/Private/TextAnalysis.h>
#include <TextLayout/Private/VisualOrder.h>
#include <TextLayout/Public/TextLayoutException.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <hb.h>
#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// Throws TextLayoutException if the tag is not well-formed.
hb_language_t makeLanguage(const std::string& tag) {
    if (tag.empty()) {
        return HB_LANGUAGE_INVALID;
    }
    std::array<char, ULOC_FULLNAME_CAPACITY> locale{};
    std::int32_t parsed = 0;
    UErrorCode status = U_ZERO_ERROR;
    uloc_forLanguageTag(tag.c_str(), locale.data(), static_cast<std::int32_t>(locale.size()), &parsed,
                        &status);
    if (U_FAILURE(status) || static_cast<std::size_t>(parsed) != tag.size()) {
        throw TextLayoutException("\"" + tag + "\" is not a well-formed BCP 47 language tag");
    }
    return hb_language_from_string(tag.data(), static_cast<int>(tag.size()));
}

/// Shapes one text.
class Shaping {
public:
    Shaping(const FontEngine::FontFactory& factory, const FontLoaders::CoverageFallback* fallback,
            ShapingCaches& caches, std::string_view text, const std::vector<TextSpan>& spans,
            ParagraphDirection direction)
        : _groups(text, spans)
        , _analysis(analyse(text, direction))
        , _runShaper(caches, text, _analysis.clusterStarts, _parts.glyphs) {
        _parts.text = text;
        _parts.glyphs.reserve(text.size());
        prepareFonts(factory, fallback, caches);
    }

    ShapedTextParts shape() {
        std::uint32_t begin = 0;
        for (const TextItem& item : _analysis.items) {
            if (item.end > begin) { // or else a cluster begins before the item and ends behind it
                const std::uint32_t end = findClusterFrom(item.end);
                shape(item, {begin, end});
                begin = end;
            }
        }
        orderRuns();
        for (const BidiParagraph& paragraph : _analysis.paragraphs) {
            _parts.paragraphs.push_back({paragraph.begin, paragraph.end, paragraph.baseLevel});
        }
        _parts.glyphs.shrink_to_fit();
        _parts.styles = _groups.takeStyles();
        return std::move(_parts);
    }

private:
    struct Group {
        ClusterFonts fonts;
        hb_language_t language;
        FeatureSettings features;
    };

    void prepareFonts(const FontEngine::FontFactory& factory, const FontLoaders::CoverageFallback* fallback,
                      ShapingCaches& caches) {
        _fontGroups.reserve(_groups.getGroupCount());
        for (const StyleGroups::Span& span : _groups.getSpans()) {
            if (span.group == _fontGroups.size()) {
                const TextStyle& style = _groups.getStyles()[span.style];
                _fontGroups.push_back({ClusterFonts(factory, fallback, caches, style, _parts.fonts),
                                       makeLanguage(style.language), FeatureSettings(style.features)});
            }
        }
    }

    /// The first cluster that begins at `position` or behind it. A cluster is never divided: all of it
    /// belongs to the item and the style of its first character.
    std::uint32_t findClusterFrom(std::uint32_t position) const {
        const ByteSet& starts = _analysis.clusterStarts;
        return starts.test(position) ? position : static_cast<std::uint32_t>(starts.next(position));
    }

    /// Divides a part of the text where the group of styles changes.
    void shape(const TextItem& item, const TextPart& part) {
        for (std::uint32_t begin = part.begin; begin != part.end;) {
            while (_groups.getSpans()[_span].end <= begin) {
                ++_span;
            }
            const std::uint32_t group = _groups.getSpans()[_span].group;
            const std::uint32_t end = findEndOfGroup(group, part.end);
            shape(item, {begin, end}, _fontGroups[group]);
            begin = end;
        }
    }

    /// Up to, but not beyond, `limit`, where a cluster begins.
    std::uint32_t findEndOfGroup(std::uint32_t group, std::uint32_t limit) const {
        const auto& spans = _groups.getSpans();
        std::size_t last = _span;
        while (spans[last].end < limit && spans[last + 1].group == group) {
            ++last;
        }
        return spans[last].end < limit ? findClusterFrom(spans[last].end) : limit;
    }

    /// Divides a part of an item where the font changes.
    void shape(const TextItem& item, const TextPart& part, Group& group) {
        TextPart run{part.begin, part.begin};
        std::uint32_t runFont = 0;
        while (run.end != part.end) {
            const auto end = static_cast<std::uint32_t>(_analysis.clusterStarts.next(run.end));
            const std::uint32_t font =
                group.fonts.find(std::string_view(_parts.text).substr(run.end, end - run.end));
            if (font != runFont && run.begin != run.end) {
                shapeRun(item, run, runFont, group);
                run.begin = run.end;
            }
            runFont = font;
            run.end = end;
        }
        shapeRun(item, run, runFont, group);
    }

    void shapeRun(const TextItem& item, const TextPart& part, std::uint32_t font, Group& group) {
        const auto firstGlyph = static_cast<std::uint32_t>(_parts.glyphs.size());
        hb_segment_properties_t properties = HB_SEGMENT_PROPERTIES_DEFAULT;
        properties.direction = item.level % 2 != 0 ? HB_DIRECTION_RTL : HB_DIRECTION_LTR;
        const std::string_view script = item.script.getLetters();
        properties.script = hb_script_from_iso15924_tag(HB_TAG(script[0], script[1], script[2], script[3]));
        properties.language = group.language;
        _runShaper.append({part, *_parts.fonts[font].font.getFace(), properties, group.features});
        addRuns({part.begin, part.end, firstGlyph, static_cast<std::uint32_t>(_parts.glyphs.size()), font, 0,
                 item.script, item.level, 0.0F});
    }

    /// Divides a run where its style changes. A cluster has the style of its first character.
    void addRuns(ShapedRun rest) {
        for (std::size_t span = _span; rest.begin != rest.end; ++span) {
            const StyleGroups::Span& style = _groups.getSpans()[span];
            ShapedRun run = cut(rest, style.end);
            if (run.begin != run.end) {
                run.style = style.style;
                run.width = measure(run);
                _runs.push_back(run);
            }
        }
    }

    /// Takes the clusters that begin before the byte `at` from `rest`.
    ShapedRun cut(ShapedRun& rest, std::uint32_t at) const {
        const auto glyph = [&](std::uint32_t index) { return _parts.glyphs.begin() + index; };
        const bool isRightToLeft = rest.isRightToLeft();
        const auto found = std::partition_point(
            glyph(rest.glyphBegin), glyph(rest.glyphEnd),
            [&](const ShapedGlyph& candidate) { return (candidate.cluster < at) != isRightToLeft; });
        const auto middle = static_cast<std::uint32_t>(found - glyph(0));
        ShapedRun taken = rest;
        if (isRightToLeft) {
            taken.glyphBegin = rest.glyphEnd = middle;
        } else {
            taken.glyphEnd = rest.glyphBegin = middle;
        }
        const bool isAll = rest.glyphBegin == rest.glyphEnd;
        const std::uint32_t firstOfRest = isRightToLeft ? rest.glyphEnd - 1 : rest.glyphBegin;
        taken.end = rest.begin = isAll ? rest.end : glyph(firstOfRest)->cluster;
        return taken;
    }

    float measure(const ShapedRun& run) const {
        const RunFont& font = _parts.fonts[run.font];
        std::int64_t units = 0;
        std::int64_t spaces = 0;
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            units += _parts.glyphs[i].advance;
            spaces += _parts.glyphs[i].isSpaced ? 1 : 0;
        }
        return font.toUnits(static_cast<float>(units)) + font.letterSpacing * static_cast<float>(spaces);
    }

    void orderRuns() {
        std::vector<BidiLevel> levels(_runs.size());
        std::transform(_runs.begin(), _runs.end(), levels.begin(),
                       [](const ShapedRun& run) { return run.level; });
        std::vector<std::uint32_t> order;
        reorderVisually(levels.data(), levels.size(), order);
        _parts.runs.reserve(order.size());
        for (const std::uint32_t run : order) {
            _parts.runs.push_back(_runs[run]);
        }
    }

    StyleGroups _groups;
    TextAnalysis _analysis;
    ShapedTextParts _parts;
    RunShaper _runShaper;
    std::vector<Group> _fontGroups;
    std::vector<ShapedRun> _runs; // in logical order
    std::size_t _span = 0;        // of the part that is being shaped
};

} // namespace

TextShaping::TextShaping(NNPtr<const FontEngine::FontFactory> factory,
                         std::shared_ptr<const FontLoaders::CoverageFallback> fallback,
                         std::uint64_t maxWordBytes)
    : _factory(std::move(factory))
    , _fallback(std::move(fallback))
    , _caches(maxWordBytes) {}

NNPtr<const ShapedText> TextShaping::shape(std::string_view text, const std::vector<TextSpan>& spans,
                                           ParagraphDirection direction) const {
    Shaping shaping(*_factory, _fallback.get(), _caches, text, spans, direction);
    return makeNNPtr<const ShapedText>(shaping.shape(), shared_from_this());
}

} // namespace Vell::TextLayout
