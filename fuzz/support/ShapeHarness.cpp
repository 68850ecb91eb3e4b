#include <fuzz/support/Harness.h>

#include <fuzz/support/ShapeRules.h>
#include <fuzz/support/ShapeScript.h>
#include <fuzz/support/Tolerate.h>

#include <FontEngine/FontEngine.h>
#include <support/CountingLoader.h>
#include <support/Descriptions.h>
#include <support/FontBuilder.h>

#include <memory>
#include <optional>

namespace Vell::Fuzz {

namespace {

using namespace TextLayout;
using Testing::FontBuilder;
using Testing::makeBoxGlyph;

struct CodeSpan {
    char32_t first;
    char32_t last;
};

/// Letters, marks and joiners of scripts that HarfBuzz shapes by different rules.
constexpr CodeSpan codes[] = {{' ', ' '},       {'0', '9'},       {'a', 'z'},         {0x300, 0x303},
                              {0x323, 0x323},   {0x416, 0x419},   {0x5D0, 0x5D8},     {0x5B0, 0x5B2},
                              {0x622, 0x62A},   {0x633, 0x636},   {0x644, 0x64F},     {0x915, 0x925},
                              {0x930, 0x930},   {0x93C, 0x93C},   {0x93F, 0x941},     {0x947, 0x947},
                              {0x94D, 0x94D},   {0xE01, 0xE04},   {0xE31, 0xE34},     {0xE48, 0xE48},
                              {0x1100, 0x1103}, {0x1161, 0x1163}, {0x11A8, 0x11A9},   {0x1780, 0x1783},
                              {0x17B6, 0x17B8}, {0x17D2, 0x17D2}, {0x1820, 0x1823},   {0x200C, 0x200D},
                              {0x3042, 0x3045}, {0x4E00, 0x4E02}, {0x1F468, 0x1F469}, {0xFE0F, 0xFE0F}};

FontBuilder makeShapedFont() {
    FontBuilder font("Test Sans");
    for (const CodeSpan& span : codes) {
        for (char32_t code = span.first; code <= span.last; ++code) {
            font.map(code, font.addGlyph({400 + static_cast<unsigned int>(code % 300), {}, {}}));
        }
    }
    return font;
}

Bytes makeEmojiFallbackFont() {
    FontBuilder font("Test Fallback");
    font.map(0x3A9, font.addGlyph(makeBoxGlyph(700, 100, 0, 600, 700)));
    font.map(0x1F600, font.addGlyph(makeBoxGlyph(1000, 0, 0, 1000, 1000)));
    return font.build();
}

class OneFallback final : public FontLoaders::CoverageFallback {
public:
    std::optional<FontLoaders::CoveringFace>
    findFace(const FontLoaders::CoverageRequest& /*request*/) const override {
        const auto face = Testing::makeFaceInfo("Test Fallback");
        return FontLoaders::CoveringFace{face, face};
    }
};

NNPtr<const FontEngine::FontFactory> makeFactory(const ShapeScript& script) {
    static const FontBuilder shapedFont = makeShapedFont();
    static const auto fallbackFont = std::make_shared<const Bytes>(makeEmojiFallbackFont());
    FontBuilder font = shapedFont;
    for (const FuzzedTable& table : script.tables) {
        font.setTable(table.tag, table.content);
    }
    const auto loader = std::make_shared<Testing::CountingLoader>();
    loader->setFont("Test Sans", false, false, font.build());
    loader->setFont("Test Fallback", false, false, fallbackFont);
    return FontEngine::FontFactory::create(loader, "Test Sans");
}

ParagraphStyle makeParagraphStyle(const ShapeScript& script) {
    ParagraphStyle style;
    style.setWidth(script.width);
    if (script.isJustified) {
        style.setAlignment(TextAlignment::Justify);
    }
    if (script.hasEllipsis) {
        style.setMaxLines(2).setEllipsis();
    }
    return style;
}

void shapeAndBreak(const ShapeScript& script) {
    const auto fallback = script.hasFallback ? std::make_shared<const OneFallback>() : nullptr;
    const auto factory = makeFactory(script);
    const TextShaper shaper(factory, fallback);
    const auto spans = script.makeSpans();
    const auto text = shaper.shape(script.text, spans, script.direction);
    checkText(*text);
    checkSameGlyphs(*text, *shaper.shape(script.text, spans, script.direction));
    tolerate<TextLayoutException>([&] { checkParagraph(Paragraph(text, makeParagraphStyle(script))); });
}

} // namespace

void runShape(const Bytes& input) {
    const ShapeScript script(input);
    tolerate<TextLayoutException>([&] { shapeAndBreak(script); });
}

} // namespace Vell::Fuzz
