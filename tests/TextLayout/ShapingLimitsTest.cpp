// Texts, fonts and settings that no honest client has. The time for them must grow in proportion to their
// size.

#include "LayoutTables.h"

#include <support/CountingLoader.h>
#include <support/FontBuilder.h>

#include <FontEngine/FontEngine.h>
#include <TextLayout/TextLayout.h>

#include <gmock/gmock.h>
#include <hb.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace Vell::Testing {

using namespace TextLayout;
using FontEngine::describeFont;
using FontEngine::FontFactory;

namespace {

std::string repeat(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

double getThreadSeconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <class Work>
double measure(const Work& work) {
    const double start = getThreadSeconds();
    work();
    return getThreadSeconds() - start;
}

/// Expects less time for eight times the size than a quadratic algorithm needs, which is 64 times as much.
template <class Work>
void expectLinear(std::size_t size, const Work& work) {
    work(size / 8);
    const double little = std::min(measure([&] { work(size); }), measure([&] { work(size); }));
    const double much = measure([&] { work(8 * size); });
    EXPECT_LT(much, 28.0 * little + 0.01) << "seconds";
}

NNPtr<const ShapedText> shapeOnce(const std::string& text, const TextStyle& style) {
    static const auto factory = FontFactory::create("DejaVu Sans");
    return TextShaper(factory).shape(text, style);
}

NNPtr<const FontFactory> makeFactory(const FontBuilder& font) {
    auto loader = std::make_shared<CountingLoader>();
    loader->setFont("Test Sans", false, false, font.build());
    loader->setDefaultFont(false, false, font.build());
    return FontFactory::create(NNPtr<const FontLoaders::FontLoader>(std::move(loader)), "Test Sans");
}

/// Has the glyphs 1 for a and 2 for b.
FontBuilder makeTwoLetters() {
    FontBuilder font("Test Sans");
    font.map('a', font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
    font.map('b', font.addGlyph(makeBoxGlyph(600, 100, 0, 500, 700)));
    return font;
}

TEST(ShapingLimits, TakeAsLongForEachOfManyMarksOnALetterAsForOne) {
    const struct {
        const char* family;
        const char* letter;
        const char* mark;
    } cases[] = {{"DejaVu Sans", "a", "\u0301"},
                 {"Noto Sans Devanagari", "\u0915", "\u0947"},
                 {"Noto Naskh Arabic", "\u0633", "\u064E"}};
    for (const auto& sample : cases) {
        SCOPED_TRACE(sample.family);
        const TextStyle style = describeFont(sample.family, 16.0F);
        expectLinear(4000, [&](std::size_t marks) {
            const auto text = shapeOnce(sample.letter + repeat(sample.mark, marks), style);
            EXPECT_GE(text->getGlyphs().size(), marks);
            EXPECT_EQ(text->getRuns().size(), 1U);
        });
    }
}

TEST(ShapingLimits, TakeAsLongForAClusterOfManyScriptsAsForOne) {
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    expectLinear(1000, [&](std::size_t count) {
        const auto text = shapeOnce("a" + repeat("\u200D\u0947\u0951\u093C\u200D\u0E34", count), style);
        EXPECT_EQ(text->getRuns().back().end, text->getText().size());
    });
}

TEST(ShapingLimits, GrowWithALineWithoutABreak) {
    const TextStyle style = describeFont("DejaVu Sans", 16.0F);
    for (const char* const letters : {"aV", "\u0633", "a\u05D0", "a\u0431"}) {
        SCOPED_TRACE(letters);
        expectLinear(2000, [&](std::size_t count) {
            EXPECT_GE(shapeOnce(repeat(letters, count), style)->getGlyphs().size(), count);
        });
    }
}

TEST(ShapingLimits, NestEmbeddingsAsDeepAsTheStandardSays) {
    const std::size_t depth = 10000;
    const auto text = shapeOnce(repeat("\u202B", depth) + "a" + repeat("\u202C", depth),
                                describeFont("DejaVu Sans", 16.0F));
    ASSERT_LT(text->getRuns().size(), 8U);
    const auto letter =
        std::find_if(text->getRuns().begin(), text->getRuns().end(),
                     [&](const ShapedRun& run) { return run.begin <= 3 * depth && 3 * depth < run.end; });
    EXPECT_EQ(letter->level, 126);
}

TEST(ShapingLimits, GrowWithSpansOfDifferentColours) {
    expectLinear(1000, [](std::size_t count) {
        std::vector<TextSpan> spans;
        const std::string text = repeat("a\u0431", count);
        for (std::size_t i = 0; i < text.size(); ++i) {
            TextStyle style = describeFont("DejaVu Sans", 16.0F);
            spans.push_back({i, i + 1, style.setColor({static_cast<unsigned char>(i), 0, 0, 255})});
        }
        static const TextShaper shaper(FontFactory::create("DejaVu Sans"));
        EXPECT_EQ(shaper.shape(text, spans)->getRuns().size(), 2 * count);
    });
}

TEST(ShapingLimits, ReadFeaturesOnceForATextOfManyRuns) {
    expectLinear(300, [](std::size_t count) {
        TextStyle style = describeFont("DejaVu Sans", 16.0F);
        for (std::size_t i = 0; i < count; ++i) {
            style.features.push_back({static_cast<std::uint32_t>(0x61616161 + i)});
        }
        EXPECT_EQ(shapeOnce(repeat("a\u0431", count), style)->getRuns().size(), 2 * count);
    });
}

TEST(ShapingLimits, TakeTheLastOfManySettingsOfOneFeature) {
    TextStyle style = describeFont("DejaVu Sans", 16.0F);
    const std::string word = "fi";
    const auto countGlyphs = [&] { return shapeOnce(word, style)->getGlyphs().size(); };
    const std::uint32_t ligatures = 0x6C696761;
    for (int i = 0; i < 5000; ++i) {
        style.features.push_back({ligatures, 0, 0, 1});
        style.features.push_back({ligatures, 0});
    }
    EXPECT_EQ(countGlyphs(), 2U);
    style.features.push_back({ligatures, 1});
    EXPECT_EQ(countGlyphs(), 1U);
    style.features.push_back({ligatures, 0, 1, 1});
    EXPECT_EQ(countGlyphs(), 1U) << "a setting for nothing";
}

struct Glyph {
    std::uint32_t index;
    std::uint32_t cluster;
    std::int32_t advance;

    friend bool operator==(const Glyph& lhs, const Glyph& rhs) {
        return lhs.index == rhs.index && lhs.cluster == rhs.cluster && lhs.advance == rhs.advance;
    }
};

/// What HarfBuzz makes of a text of one run at once.
std::vector<Glyph> shapeAtOnce(const ShapedText& text) {
    const ShapedRun& run = text.getRuns().front();
    const auto data = text.getFont(run).font.getFace()->getFaceData();
    hb_blob_t* const blob = hb_blob_create(reinterpret_cast<const char*>(data.bytes->data()),
                                           static_cast<unsigned int>(data.bytes->size()),
                                           HB_MEMORY_MODE_READONLY, nullptr, nullptr);
    hb_face_t* const face = hb_face_create(blob, 0);
    hb_font_t* const font = hb_font_create(face);
    hb_buffer_t* const buffer = hb_buffer_create();
    hb_buffer_add_utf8(buffer, text.getText().data(), static_cast<int>(text.getText().size()), 0, -1);
    hb_buffer_guess_segment_properties(buffer);
    hb_buffer_set_language(buffer, HB_LANGUAGE_INVALID);
    hb_shape(font, buffer, nullptr, 0);
    std::vector<Glyph> glyphs;
    for (unsigned int i = 0; i < hb_buffer_get_length(buffer); ++i) {
        const hb_glyph_info_t& info = hb_buffer_get_glyph_infos(buffer, nullptr)[i];
        glyphs.push_back(
            {info.codepoint, info.cluster, hb_buffer_get_glyph_positions(buffer, nullptr)[i].x_advance});
    }
    hb_buffer_destroy(buffer);
    hb_font_destroy(font);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
    return glyphs;
}

TEST(ShapingLimits, DivideALongTextWhereThatChangesNoGlyph) {
    const struct {
        const char* family;
        std::vector<std::string> parts;
    } cases[] = {
        {"DejaVu Sans", {"office", "AV", "To", "e\u0301", "ffi", "T.", "x"}},
        {"Noto Naskh Arabic", {"\u0633\u0644\u0627\u0645", "\u0628", "\u0631", "\u064E", "\u0644\u0627"}},
        {"Noto Sans Devanagari", {"\u0915\u094D\u0937", "\u0930\u094D", "\u0924\u093F", "\u0928"}},
        {"Noto Sans Thai", {"\u0E01\u0E34", "\u0E1B\u0E48\u0E33", "\u0E17\u0E35\u0E48", "\u0E19"}}};
    for (const auto& sample : cases) {
        SCOPED_TRACE(sample.family);
        std::string letters;
        for (std::uint32_t seed = 1; letters.size() < 80000; seed = seed * 1664525U + 1013904223U) {
            letters += sample.parts[(seed >> 16U) % sample.parts.size()];
        }
        const auto text = shapeOnce(letters, describeFont(sample.family, 16.0F));
        ASSERT_EQ(text->getRuns().size(), 1U);
        std::vector<Glyph> glyphs;
        for (const ShapedGlyph& glyph : text->getGlyphs()) {
            glyphs.push_back({glyph.index, glyph.cluster, glyph.advance});
        }
        EXPECT_TRUE(glyphs == shapeAtOnce(*text));
    }
}

TEST(ShapingLimits, RefuseAFontThatMultipliesGlyphs) {
    FontBuilder font = makeTwoLetters();
    font.setTable("GSUB", makeLayoutTable("ccmp", std::vector<LayoutLookup>(
                                                      40, LayoutLookup{2, makeMultipleSubst(1, 1, 30)})));
    const TextShaper shaper(makeFactory(font));
    const TextStyle style = describeFont("Test Sans", 10.0F);
    const auto refuse = [&](const std::string& text) { shaper.shape(text, style); };
    EXPECT_THROW(refuse("a"), TextLayoutException);
    EXPECT_THROW(refuse(repeat("a", 50000)), TextLayoutException);
    EXPECT_EQ(shaper.shape("bb", style)->getGlyphs().size(), 2U);
}

TEST(ShapingLimits, RefuseTooManyGlyphsOfCachedWords) {
    FontBuilder font = makeTwoLetters();
    font.map(' ', font.addGlyph({250, {}, {}}));
    font.setTable("GSUB", makeLayoutTable("ccmp", {{2, makeMultipleSubst(1, 1, 600)}}));
    const TextShaper shaper(makeFactory(font));
    const TextStyle style = describeFont("Test Sans", 10.0F);
    EXPECT_EQ(shaper.shape("a a", style)->getGlyphs().size(), 1201U);
    try {
        shaper.shape(repeat("a ", 1000), style);
        FAIL() << "no exception";
    } catch (const TextLayoutException& error) {
        EXPECT_STREQ(error.what(),
                     "the font makes more than 65536 glyphs, and more than 4 for each byte of the text");
    }
}

TEST(ShapingLimits, ReadHostileTablesInBoundedTime) {
    for (const unsigned int secondClassCount : {0U, 0xFFFFU}) {
        FontBuilder font = makeTwoLetters();
        font.setTable(
            "GPOS", makeLayoutTable(
                        "kern", std::vector<LayoutLookup>(
                                    10, LayoutLookup{2, makeEmptyPairs(1, 0xFFFF, secondClassCount), 2000})));
        const TextShaper shaper(makeFactory(font));
        const double seconds = measure([&] { shaper.shape("ab", describeFont("Test Sans", 10.0F)); });
        EXPECT_LT(seconds, 2.0);
    }
}

TEST(ShapingLimits, ShapeWithTablesThatAreCutOff) {
    const Bytes whole = makeLayoutTable("ccmp", {{2, makeMultipleSubst(1, 2, 3)}});
    const TextStyle style = describeFont("Test Sans", 10.0F);
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        FontBuilder font = makeTwoLetters();
        font.setTable("GSUB", Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        const auto text = TextShaper(makeFactory(font)).shape("ab", style);
        const std::size_t glyphs = text->getGlyphs().size();
        EXPECT_TRUE(size == whole.size() ? glyphs == 4 : glyphs >= 1 && glyphs <= 3) << size << " " << glyphs;
    }
}

} // namespace

} // namespace Vell::Testing
