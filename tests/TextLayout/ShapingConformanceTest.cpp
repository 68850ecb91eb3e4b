#include "ConformanceFile.h"
#include "HarfBuzzReference.h"
#include "RandomText.h"
#include "ScriptSamples.h"

#include <FontEngine/FE_FontDescriptions.h>
#include <FontEngine/FE_FontFactory.h>
#include <TextLayout/TextLayout.h>
#include <Utils/Public/Ptr/PtrUtils.h>
#include <support/CountingLoader.h>
#include <support/TemporaryFolder.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace Vell::Testing {

namespace {

using TextLayout::ShapedRun;
using TextLayout::ShapedText;

std::string getPath(const ScriptSample& sample) {
    return std::string("/usr/share/fonts/") + sample.file;
}

FontLoaders::FontBytes readFont(const std::string& path) {
    const std::string bytes = readBytes(path);
    return std::make_shared<const std::vector<unsigned char>>(bytes.begin(), bytes.end());
}

/// A shaper with one font, without fallbacks, and HarfBuzz with the same font.
class ShapedFont {
public:
    explicit ShapedFont(const std::string& path)
        : _path(path)
        , _bytes(readFont(path))
        , _reference(_bytes)
        , _loader(makeNNPtr<CountingLoader>())
        , _factory(makeFactory())
        , _shaper(_factory, nullptr) {}

    const std::string& getPath() const { return _path; }
    NNPtr<const FontEngine::FontFace> getFace() const {
        return _factory->shareFace(FontEngine::describeFont("Font", 1.0F)->getFontInfo()->getFontFaceInfo());
    }

    NNPtr<const ShapedText> shape(const std::string& text, const std::string& features = "",
                                  const std::string& language = "") const {
        const auto style = TextLayout::TextStyle(FontEngine::describeFont("Font", 10.0F))
                               .setFeatures(TextLayout::parseTextFeatures(features))
                               .setLanguage(language)
                               .setEmojiFont(TextLayout::EmojiFont::OwnFont);
        return _shaper.shape(text, style);
    }

    void forget() { _shaper.flush(); }
    FontEngine::CacheFigures getFigures() const { return _shaper.getCacheFigures(); }

    std::vector<PlainGlyph> shapeByHarfBuzz(const ReferenceRun& run) const { return _reference.shape(run); }

private:
    NNPtr<FontEngine::FontFactory> makeFactory() {
        _loader->setFont("Font", false, false, _bytes);
        _loader->setDefaultFont(false, false, _bytes);
        return FontEngine::FontFactory::create(_loader, "Font");
    }

    std::string _path;
    FontLoaders::FontBytes _bytes;
    ReferenceFont _reference;
    NNPtr<CountingLoader> _loader;
    NNPtr<FontEngine::FontFactory> _factory;
    TextLayout::TextShaper _shaper;
};

std::vector<PlainGlyph> getGlyphs(const ShapedText& text, const ShapedRun& run) {
    std::vector<PlainGlyph> glyphs;
    for (std::uint32_t i = run.glyphBegin; i != run.glyphEnd; ++i) {
        const TextLayout::ShapedGlyph& glyph = text.getGlyphs()[i];
        glyphs.push_back({glyph.index, glyph.cluster, glyph.xOffset, glyph.yOffset, glyph.advance});
    }
    return glyphs;
}

ReferenceRun describe(const ShapedText& text, const ShapedRun& run, const std::string& features,
                      const std::string& language) {
    return {text.getText(),      run.begin, run.end, std::string(run.script.getLetters()),
            run.isRightToLeft(), language,  features};
}

/// Compares each run with one call of HarfBuzz. Returns whether they are equal.
bool isExact(const ShapedFont& font, const std::string& text, const std::string& features = "",
             const std::string& language = "") {
    const auto shaped = font.shape(text, features, language);
    bool isEqual = true;
    for (const ShapedRun& run : shaped->getRuns()) {
        const auto expected = font.shapeByHarfBuzz(describe(*shaped, run, features, language));
        const auto found = getGlyphs(*shaped, run);
        EXPECT_EQ(found, expected) << font.getPath() << " '" << text << "' [" << run.begin << ", " << run.end
                                   << ") " << run.script.getLetters() << " features '" << features
                                   << "' language '" << language << "'";
        isEqual = isEqual && found == expected;
    }
    return isEqual;
}

void expectGlyphsOfHbShape(ShapedFont& font, const ScriptSample& sample, const std::string& features,
                           const std::string& language) {
    const auto cold = font.shape(sample.text, features, language);
    const auto warm = font.shape(sample.text, features, language);
    ASSERT_EQ(warm->getRuns().size(), cold->getRuns().size());
    for (std::size_t i = 0; i < cold->getRuns().size(); ++i) {
        const ShapedRun& run = cold->getRuns()[i];
        const auto expected = runHbShape(font.getPath(), describe(*cold, run, features, language));
        EXPECT_EQ(getGlyphs(*cold, run), expected)
            << sample.file << ' ' << features << ' ' << language << " cold";
        EXPECT_EQ(getGlyphs(*warm, warm->getRuns()[i]), expected)
            << sample.file << ' ' << features << ' ' << language << " warm";
    }
}

TEST(ShapingConformance, GivesTheGlyphsOfHbShapeInEveryScript) {
    std::set<std::string> scripts;
    for (const ScriptSample& sample : scriptSamples) {
        ShapedFont font(getPath(sample));
        for (const char* features : {"", sample.features}) {
            for (const char* language : {"", sample.language}) {
                expectGlyphsOfHbShape(font, sample, features, language);
            }
        }
        scripts.emplace(sample.script);
        const auto text = font.shape(sample.text);
        EXPECT_TRUE(std::any_of(text->getRuns().begin(), text->getRuns().end(), [&](const ShapedRun& run) {
            return run.script.getLetters() == sample.script;
        })) << sample.script;
    }
    EXPECT_GE(scripts.size(), 25U);
}

/// Words in any order, between spaces and other characters that words may share a glyph with.
std::string shuffle(RandomText& random, const std::vector<std::string>& words) {
    constexpr const char* separators[] = {" ",  " ",      " ",      " ",       "  ",     "",  "-",
                                          ".",  ", ",     "\u00A0", "\u200D",  "\u200C", "1", "(",
                                          ") ", "\u0301", "\u3000", " \u0308", "\n"};
    std::string text;
    for (unsigned int count = 1 + random.pick(8); count > 0; --count) {
        text += words[random.pick(static_cast<unsigned int>(words.size()))];
        text += separators[random.pick(static_cast<unsigned int>(std::size(separators)))];
    }
    return text;
}

TEST(ShapingConformance, DoesNotDependOnTheWordsThatWereShapedBefore) {
    RandomText random(1);
    for (const ScriptSample& sample : scriptSamples) {
        ShapedFont font(getPath(sample));
        const std::vector<std::string> words = splitWords(sample.text);
        for (int i = 0; i < 60; ++i) {
            const std::string text = shuffle(random, words);
            const bool hasFeatures = random.pick(4) == 0;
            const bool hasLanguage = random.pick(4) == 0;
            const std::string features = hasFeatures ? sample.features : "";
            const std::string language = hasLanguage ? sample.language : "";
            if (!isExact(font, text, features, language) || !isExact(font, text, features, language)) {
                break;
            }
            if (random.pick(30) == 0) {
                font.forget();
            }
        }
        EXPECT_GT(font.getFigures().hits, 0U) << sample.file;
    }
}

std::vector<char32_t> listCharacters(const ShapedFont& font) {
    std::vector<char32_t> characters;
    FT_UInt glyph = 0;
    const auto& face = font.getFace()->getHandle();
    for (FT_ULong code = FT_Get_First_Char(face.get(), &glyph); glyph != 0;
         code = FT_Get_Next_Char(face.get(), code, &glyph)) {
        characters.push_back(static_cast<char32_t>(code));
    }
    return characters;
}

std::vector<std::string> listFontFiles() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator("/usr/share/fonts")) {
        const std::string path = entry.path().string();
        if (entry.is_regular_file() && path.find("/noto/") != std::string::npos) {
            files.push_back(path);
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string makeWord(RandomText& random, const std::vector<char32_t>& characters) {
    std::string word;
    const char32_t near = random.pick(static_cast<unsigned int>(characters.size()));
    for (unsigned int count = 1 + random.pick(6); count > 0; --count) {
        const unsigned int index =
            random.pick(3) == 0 ? random.pick(static_cast<unsigned int>(characters.size()))
                                : (near + random.pick(60)) % static_cast<unsigned int>(characters.size());
        appendUtf8(word, characters[index]);
    }
    return word;
}

TEST(ShapingConformance, HoldsForAnyCharactersOfInstalledFonts) {
    RandomText random(2);
    for (const std::string& file : listFontFiles()) {
        ShapedFont font(file);
        const std::vector<char32_t> characters = listCharacters(font);
        if (characters.size() < 2) {
            continue;
        }
        std::vector<std::string> words;
        for (int i = 0; i < 10; ++i) {
            words.push_back(makeWord(random, characters));
        }
        for (int i = 0; i < 10; ++i) {
            const std::string text = shuffle(random, words);
            if (!isExact(font, text) || !isExact(font, text)) {
                break;
            }
        }
    }
}

/// Texts in one font, each of which may find words of those before it.
void expectExact(const char* file, const std::vector<std::string>& texts) {
    ShapedFont font(std::string("/usr/share/fonts/truetype/noto/") + file);
    for (const std::string& text : texts) {
        EXPECT_TRUE(isExact(font, text));
        EXPECT_TRUE(isExact(font, text));
    }
}

TEST(ShapingConformance, TakesMarksIntoTheClusterOfTheSpaceBefore) {
    expectExact("NotoSansMyanmar-Regular.ttf", {"\u101F \u1068"});
}

TEST(ShapingConformance, ComposesCharactersOnlyBesideMarks) {
    const std::string composed = "\U000110AB";
    expectExact("NotoSansKaithi-Regular.ttf",
                {composed + " " + composed, composed + " \U0001109D\U000110BA", composed + " " + composed});
}

TEST(ShapingConformance, JoinsLettersToThoseBeyondTheRun) {
    expectExact("NotoKufiArabic-Bold.ttf", {"\u0696", "5\u0600\u200D\u0696", "\u0696"});
}

TEST(ShapingConformance, PutsDottedCirclesWhereTheWholeRunHasThem) {
    const std::string broken = ".\u1062";
    std::string text = broken;
    for (int syllables = 0; syllables < 40; ++syllables) {
        expectExact("NotoSerifMyanmar-Bold.ttf", {broken, text + " " + broken});
        text += " \u1000";
    }
}

TEST(ShapingConformance, LooksBehindJoinersWithoutABase) {
    expectExact("NotoSansManichaean-Regular.ttf", {"\u200C \r\U00010ACC", "\U00010AD6 \n\u200C"});
}

TEST(ShapingConformance, DecidesAboutTheDirectionOfNumbersForTheWholeRun) {
    const std::string marks = "\u0592  \u05BF\u05A5";
    expectExact("NotoRashiHebrew-Regular.ttf", {"1 " + marks, marks, "1 " + marks});
}

} // namespace

} // namespace Vell::Testing
