#include <TextLayout/Private/TextShaping.h>

#include <TextLayout/Private/ClusterFonts.h>
#include <TextLayout/Private/FeatureSettings.h>
#include <TextLayout/Private/RunShaper.h>
#include <TextLayout/Private/StyleGroups.h>
#include <TextLayout/Private/StylesInUse.h>
#include <TextLayout/Private/TextAnalysis.h>
#include <TextLayout/Private/TextFonts.h>
#include <TextLayout/Private/VisualOrder.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <utility>

namespace Vell::TextLayout {

namespace {

/// Shapes one text, which is not without a style. Has the lock of the caches meanwhile.
class Shaping {
public:
    struct Input {
        FontSource source;
        std::string_view text;
        const StyleGroups& groups;
        StylesInUse& styles; ///< of the groups
        const TextAnalysis& analysis;
    };

    explicit Shaping(const Input& input)
        : _input(input)
        , _clusterStarts(input.analysis.clusterStarts)
        , _fonts(*input.styles.front().prepared)
        , _glyphs(takeSpare(input.source.caches, input.text.size()))
        , _runShaper({input.source.caches, input.source.lock, input.text, input.analysis.isWellFormed,
                      _clusterStarts, _glyphs}) {
        for (const StyleInUse& style : input.styles) {
            const std::uint32_t ownFont = _fontGroups.empty() ? 0 : _fonts.add(style.prepared->getOwnFont());
            _fontGroups.emplace_back(input.source, *style.prepared, ownFont, _fonts);
        }
    }
    ~Shaping() { // descriptions are the client's: they end without the lock
        if (_input.source.lock.owns_lock()) {
            _input.source.lock.unlock();
        }
    }
    Shaping(const Shaping&) = delete;
    Shaping& operator=(const Shaping&) = delete;

    void shape() {
        std::uint32_t begin = 0;
        for (const TextItem& item : _input.analysis.items) {
            if (item.end > begin) { // or else a cluster begins before the item and ends behind it
                const std::uint32_t end = findClusterFrom(item.end);
                shape(item, {begin, end});
                begin = end;
            }
        }
    }

    void takeTo(ShapedTextParts& parts) {
        _runShaper.close();
        orderRuns(parts.runs);
        takeGlyphs(parts.glyphs);
    }

    std::shared_ptr<const TextLook> takeLook() {
        StyleInUse& style = _input.styles.front();
        if (_input.groups.getStyleCount() == 1 && style.isExact && _fonts.isShared()) {
            return std::move(style.prepared);
        }
        return std::make_shared<const TextLook>(TextLook{_input.groups.copyStyles(), _fonts.take()});
    }

private:
    struct Group {
        Group(const FontSource& source, PreparedStyle& preparedStyle, std::uint32_t ownFont, TextFonts& used)
            : fonts(source, preparedStyle, ownFont, used)
            , features(preparedStyle.getStyle().features)
            , style(preparedStyle) {}

        ClusterFonts fonts;
        FeatureSettings features;
        PreparedStyle& style;
    };

    /// The first cluster that begins at `position` or behind it. A cluster is never divided: all of it
    /// belongs to the item and the style of its first character.
    std::uint32_t findClusterFrom(std::uint32_t position) const {
        return _clusterStarts.test(position) ? position
                                             : static_cast<std::uint32_t>(_clusterStarts.next(position));
    }

    /// Divides a part of the text where the group of styles changes.
    void shape(const TextItem& item, const TextPart& part) {
        for (std::uint32_t begin = part.begin; begin != part.end;) {
            while (_input.groups.getSpans()[_span].end <= begin) {
                ++_span;
            }
            const std::uint32_t group = _input.groups.getSpans()[_span].group;
            const std::uint32_t end = findEndOfGroup(group, part.end);
            shape(item, {begin, end}, _fontGroups[group]);
            begin = end;
        }
    }

    /// Up to, but not beyond, `limit`, where a cluster begins.
    std::uint32_t findEndOfGroup(std::uint32_t group, std::uint32_t limit) const {
        const auto& spans = _input.groups.getSpans();
        std::size_t last = _span;
        while (spans[last].end < limit && spans[last + 1].group == group) {
            ++last;
        }
        return spans[last].end < limit ? findClusterFrom(spans[last].end) : limit;
    }

    /// Divides a part of an item where the font changes.
    void shape(const TextItem& item, const TextPart& part, Group& group) {
        TextPart run{part.begin, part.begin};
        std::uint32_t runFont = group.fonts.getOwnFont();
        while (run.end != part.end) {
            const TextPart rest{run.end, part.end};
            std::uint32_t end = findEndOfOwn(rest, group);
            std::uint32_t font = group.fonts.getOwnFont();
            if (end == rest.begin) {
                end = static_cast<std::uint32_t>(_clusterStarts.next(end));
                font = group.fonts.find(_input.text.substr(rest.begin, end - rest.begin));
            }
            if (font != runFont && run.begin != run.end) {
                shapeRun(item, run, runFont, group);
                run.begin = run.end;
            }
            runFont = font;
            run.end = end;
        }
        shapeRun(item, run, runFont, group);
    }

    /// The end of the clusters at the front of a part that the group's own font draws, as far as that is
    /// easily found.
    std::uint32_t findEndOfOwn(const TextPart& part, const Group& group) {
        if (part.begin >= _endOfOwn) {
            const auto endOfText = static_cast<std::uint32_t>(_input.text.size());
            const TextPart ofGroup{part.begin,
                                   findEndOfGroup(_input.groups.getSpans()[_span].group, endOfText)};
            _endOfOwn = group.fonts.findEndOfOwn(_input.text, _clusterStarts, ofGroup);
        }
        return std::min(_endOfOwn, part.end);
    }

    void shapeRun(const TextItem& item, const TextPart& part, std::uint32_t font, Group& group) {
        const auto firstGlyph = static_cast<std::uint32_t>(_glyphs.size());
        const RunToShape run{part, _fonts[font].font.getFace(), item.script, item.level % 2 != 0};
        _runShaper.append(run, group.style, group.features);
        // Written in place: the processor waits for a run that is put together elsewhere and then copied.
        ShapedRun& added = _runs.emplace_back(noRun);
        added.begin = part.begin;
        added.end = part.end;
        added.glyphBegin = firstGlyph;
        added.glyphEnd = static_cast<std::uint32_t>(_glyphs.size());
        added.font = font;
        added.script = item.script;
        added.level = item.level;
        if (const StyleGroups::Span& span = _input.groups.getSpans()[_span]; span.end >= part.end) {
            added.style = span.style;
            added.width = measure(added);
        } else {
            const ShapedRun divided = added;
            _runs.pop_back();
            addRuns(divided);
        }
    }

    /// Divides a run where its style changes. A cluster has the style of its first character.
    void addRuns(ShapedRun rest) {
        for (std::size_t span = _span; rest.begin != rest.end; ++span) {
            const StyleGroups::Span& style = _input.groups.getSpans()[span];
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
        const auto glyph = [&](std::uint32_t index) { return _glyphs.begin() + index; };
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
        const RunFont& font = _fonts[run.font];
        std::int64_t units = 0;
        std::int64_t spaces = 0;
        for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
            units += _glyphs[i].advance;
            spaces += _glyphs[i].isSpaced ? 1 : 0;
        }
        return font.toUnits(static_cast<float>(units)) + font.letterSpacing * static_cast<float>(spaces);
    }

    void orderRuns(ShapedRuns& ordered) const {
        if (_input.analysis.isPlain) {
            ordered.assign(_runs.begin(), _runs.end());
            return;
        }
        ordered.reserve(_runs.size());
        std::vector<BidiLevel> levels(_runs.size());
        std::transform(_runs.begin(), _runs.end(), levels.begin(),
                       [](const ShapedRun& run) { return run.level; });
        std::vector<std::uint32_t> order;
        reorderVisually(levels.data(), levels.size(), order);
        for (const std::uint32_t run : order) {
            ordered.push_back(_runs[run]);
        }
    }

    /// The memory that waits for the next text, unless that needs more.
    static std::vector<ShapedGlyph> takeSpare(ShapingCaches& caches, std::size_t textSize) {
        std::vector<ShapedGlyph> glyphs = std::move(caches.spareGlyphs);
        glyphs.reserve(std::max(textSize, spareSize));
        return glyphs;
    }

    void takeGlyphs(std::vector<ShapedGlyph>& glyphs) {
        if (_glyphs.capacity() == spareSize) {
            glyphs = _glyphs;
            _glyphs.clear();
            _input.source.caches.spareGlyphs = std::move(_glyphs);
        } else {
            _glyphs.shrink_to_fit();
            glyphs = std::move(_glyphs);
        }
    }

    static constexpr std::size_t spareSize = 512;
    static constexpr ShapedRun noRun{0, 0, 0, 0, 0, 0, ScriptCode("Zyyy"), 0, 0.0F};

    const Input _input;
    const ByteSet& _clusterStarts;
    TextFonts _fonts;
    std::vector<ShapedGlyph> _glyphs;
    RunShaper _runShaper;
    boost::container::small_vector<Group, 1> _fontGroups;
    boost::container::small_vector<ShapedRun, 32> _runs; // in logical order
    std::size_t _span = 0;                               // of the part that is being shaped
    // Up to there, the own font of the group at work is known to draw all clusters.
    std::uint32_t _endOfOwn = 0;
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
    return shape(text, StyleGroups(text, spans), direction);
}

NNPtr<const ShapedText> TextShaping::shape(std::string_view text, const TextStyle& style,
                                           ParagraphDirection direction) const {
    return shape(text, StyleGroups(text, style), direction);
}

NNPtr<const ShapedText> TextShaping::shape(std::string_view text, const StyleGroups& groups,
                                           ParagraphDirection direction) const {
    TextAnalysis analysis = analyse(text, direction);
    CachesLock lock(_caches.mutex, std::defer_lock);
    auto shaped = std::make_shared<ShapedText>(text, shared_from_this());
    shaped->_parts.paragraphs = std::move(analysis.paragraphs);
    if (StylesInUse styles = prepareStyles(*_factory, _caches, groups, lock); !styles.empty()) {
        Shaping shaping({{*_factory, _fallback.get(), _caches, lock}, text, groups, styles, analysis});
        shaping.shape();
        shaping.takeTo(shaped->_parts);
        shaped->complete(shaping.takeLook());
    } else {
        shaped->complete(std::make_shared<const TextLook>());
    }
    return shaped;
}

} // namespace Vell::TextLayout
