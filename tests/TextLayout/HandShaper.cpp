#include "HandShaper.h"

#include <support/FontBuilder.h>

#include <TextLayout/Private/ShapingService.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <Utils/Public/Utf8.h>

#include <algorithm>
#include <utility>

namespace Vell::Testing {

using namespace TextLayout;

namespace {

constexpr unsigned int advance = 500;
constexpr int wideAdvance = 1000;

Bytes buildFont(const std::string& family, std::uint32_t lastCode) {
    FontBuilder font(family);
    const unsigned int glyph = font.addGlyph(makeBoxGlyph(advance, 50, 0, 450, 700));
    for (std::uint32_t code = 1; code <= lastCode; ++code) {
        font.map(code, glyph);
    }
    return font.build();
}

NNPtr<FontEngine::FontFactory> makeFactory() {
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Test Sans", false, false, buildFont("Test Sans", 0x2100));
    loader->setFont("Plain Sans", false, false, buildFont("Plain Sans", 0x7E));
    return FontEngine::FontFactory::create(NNPtr<const FontLoaders::FontLoader>(std::move(loader)),
                                           "Test Sans");
}

/// Shapes as the HandShaper that it is a copy of.
class HandService : public ShapingService {
public:
    explicit HandService(HandShaper shaper)
        : _shaper(std::move(shaper)) {}

    NNPtr<const ShapedText> shape(std::string_view text, const std::vector<TextSpan>& spans,
                                  ParagraphDirection direction) const override {
        return makeNNPtr<const ShapedText>(_shaper.makeParts(text, spans, direction));
    }

private:
    HandShaper _shaper;
};

/// Writes the runs and glyphs of a text in logical order.
class PartsWriter {
public:
    PartsWriter(ShapedTextParts& parts, bool hasLigatures)
        : _parts(parts)
        , _hasLigatures(hasLigatures)
        , _boundaries(findGraphemeBoundaries(parts.text)) {}

    void addRun(std::size_t begin, std::size_t end, std::uint32_t style, BidiLevel level) {
        ShapedRun run = {static_cast<std::uint32_t>(begin),
                         static_cast<std::uint32_t>(end),
                         countGlyphs(),
                         0,
                         style,
                         style,
                         ScriptCode("Zyyy"),
                         level,
                         0.0F};
        for (std::size_t cluster = begin; cluster < end;) {
            cluster = addCluster(cluster, end, _parts.fonts[style]);
        }
        run.glyphEnd = countGlyphs();
        const auto glyphs = _parts.glyphs.begin();
        if (run.isRightToLeft()) {
            std::reverse(glyphs + run.glyphBegin, glyphs + run.glyphEnd);
        }
        std::for_each(glyphs + run.glyphBegin, glyphs + run.glyphEnd, [&](const ShapedGlyph& glyph) {
            run.width += _parts.fonts[style].toUnits(static_cast<float>(glyph.advance)) +
                         (glyph.isSpaced ? _parts.fonts[style].letterSpacing : 0.0F);
        });
        _parts.runs.push_back(run);
    }

private:
    std::uint32_t countGlyphs() const { return static_cast<std::uint32_t>(_parts.glyphs.size()); }

    std::size_t addCluster(std::size_t begin, std::size_t end, const RunFont& font) {
        const std::string_view text = _parts.text;
        if (_hasLigatures && text.substr(begin, std::min<std::size_t>(end - begin, 2)) == "fi") {
            addGlyph(begin, wideAdvance, 'f', font);
            return begin + 2;
        }
        const auto boundary = std::upper_bound(_boundaries.begin(), _boundaries.end(), begin);
        const std::size_t clusterEnd = std::min(*boundary, end);
        int glyphAdvance = text[begin] == 'W' ? wideAdvance : static_cast<int>(advance);
        for (const char* position = text.data() + begin; position < text.data() + clusterEnd;) {
            addGlyph(begin, glyphAdvance, decodeUtf8(position, text.data() + end), font);
            glyphAdvance = 0;
        }
        _parts.glyphs.back().isSpaced = true;
        return clusterEnd;
    }

    void addGlyph(std::size_t cluster, int glyphAdvance, unsigned int code, const RunFont& font) {
        const auto index = font.font.getFace()->getBasicMetrics().getCharMap()[code].glyphIndex;
        _parts.glyphs.push_back(
            {static_cast<std::uint32_t>(cluster), glyphAdvance, 0, 0, index, false, false, true, false});
    }

    ShapedTextParts& _parts;
    bool _hasLigatures;
    std::vector<std::size_t> _boundaries;
};

/// The levels of the bytes, and the paragraphs.
std::vector<BidiLevel> findByteLevels(ShapedTextParts& parts, ParagraphDirection direction) {
    std::vector<BidiLevel> levels;
    const std::string_view text = parts.text;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t newLine = text.find('\n', begin);
        const std::size_t end = newLine == std::string_view::npos ? text.size() : newLine + 1;
        const BidiLine line(text.substr(begin, end - begin), direction);
        parts.paragraphs.push_back(
            {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end), line.getBaseLevel()});
        BidiLevel before = line.getBaseLevel();
        std::size_t character = 0;
        for (const char* position = text.data() + begin; position < text.data() + end; ++character) {
            const char* const from = position;
            decodeUtf8(position, text.data() + end);
            const BidiLevel level = line.getLevels()[character];
            before = level == removedFromLine ? before : level;
            levels.insert(levels.end(), static_cast<std::size_t>(position - from), before);
        }
        begin = end;
    }
    return levels;
}

} // namespace

HandShaper::HandShaper()
    : _factory(makeFactory()) {}

TextStyle HandShaper::makeStyle(const std::string& family, float size, Gfx::TextPositionType position) {
    return FontEngine::describeFont(family, size, FontEngine::FontStyle().setPosition(position));
}

ShapedTextParts HandShaper::makeParts(std::string_view text, ParagraphDirection direction) const {
    return makeParts(text, {{0, text.size(), makeStyle()}}, direction);
}

ShapedTextParts HandShaper::makeParts(std::string_view text, const std::vector<TextSpan>& spans,
                                      ParagraphDirection direction) const {
    ShapedTextParts parts;
    parts.text = text;
    const std::vector<BidiLevel> levels = findByteLevels(parts, direction);
    PartsWriter writer(parts, _hasLigatures);
    for (const TextSpan& span : spans) {
        const auto info = span.style.font->getFontInfo();
        parts.fonts.push_back(
            {info->getFontFaceInfo(), _factory->getFont(info), span.style.font->getLetterSpacing()});
        parts.styles.push_back(span.style);
        for (std::size_t begin = span.begin; begin < span.end;) {
            std::size_t end = begin + 1;
            while (end < span.end && levels[end] == levels[begin] && text[end - 1] != '\n') {
                ++end;
            }
            writer.addRun(begin, end, static_cast<std::uint32_t>(parts.styles.size() - 1), levels[begin]);
            begin = end;
        }
    }
    std::reverse(parts.runs.begin(), parts.runs.end()); // nobody may depend on their order
    return parts;
}

NNPtr<const ShapedText> HandShaper::shape(std::string_view text, ParagraphDirection direction) const {
    return shape(text, {{0, text.size(), makeStyle()}}, direction);
}

NNPtr<const ShapedText> HandShaper::shape(std::string_view text, const std::vector<TextSpan>& spans,
                                          ParagraphDirection direction) const {
    return makeNNPtr<const ShapedText>(makeParts(text, spans, direction),
                                       std::make_shared<const HandService>(*this));
}

} // namespace Vell::Testing
