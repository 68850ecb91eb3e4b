#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/ErrorText.h>
#include <support/OpenedFont.h>
#include <support/RecordingPainter.h>
#include <support/StackThread.h>
#include <support/spy/FreeTypeSpy.h>

#include <FontLoaders/Public/Exceptions.h>

#include <gmock/gmock.h>

namespace Vell::FontEngine {
namespace {

using FontLoaders::FreeTypeException;
using Testing::Bytes;
using Testing::FontBuilder;
using Testing::FontComponent;
using Testing::FontGlyph;
using Testing::FreeTypeSpy;
using Testing::getErrorText;
using Testing::RecordingPainter;

KeyFields makeKey(unsigned long glyph, float size = 12.0F) {
    return KeyFields().with(&KeyFields::glyph, glyph).with(&KeyFields::size, size);
}

std::shared_ptr<const FT_BitmapGlyphRec_> render(const Engine& engine, const KeyFields& fields) {
    return engine.factory->getBitmapGlyph(fields.makeBitmap(), engine.getFace(), false);
}

std::string getRenderingError(const Engine& engine, unsigned long glyph) {
    return getErrorText<FreeTypeException>([&] { render(engine, makeKey(glyph)); });
}

std::string getOutlineError(const Engine& engine, unsigned long glyph) {
    RecordingPainter painter;
    return getErrorText<FreeTypeException>([&] {
        engine.factory->getOutlineGlyphPath(makeKey(glyph).makeOutline(), engine.getFace(), painter);
    });
}

std::string getLoadingError(unsigned long glyph) {
    return "FT_Load_Glyph() failed, error: 21, glyph index: " + std::to_string(glyph) + ' ';
}

/// Glyph 1 is a box. Each further glyph contains the previous one. 'A' maps to glyph 1.
FontBuilder makeChain(unsigned int length) {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    for (unsigned int glyph = 2; glyph <= length; ++glyph) {
        font.addGlyph({500, {}, {}, {{glyph - 1}}});
    }
    return font.map('A', 1);
}

/// A font of boxes for A to Y and, without a character, a composite of so many small boxes side by side and
/// so many blanks.
FontBuilder makeFontWithWideGlyph(unsigned int boxCount, unsigned int blankCount) {
    FontBuilder font;
    for (unsigned int i = 0; i < 25; ++i) {
        const int edge = static_cast<int>(403 + 13 * i);
        font.map('A' + i, font.addGlyph(Testing::makeBoxGlyph(500, 37, 11, edge, edge + 5)));
    }
    const unsigned int box = font.addGlyph(Testing::makeBoxGlyph(20, 0, 0, 9, 9));
    const unsigned int blank = font.addGlyph(FontGlyph());
    std::vector<FontComponent> components;
    for (unsigned int i = 0; i < boxCount; ++i) {
        components.push_back({box, static_cast<int>(i % 90 * 11), static_cast<int>(i / 90 % 90 * 11)});
    }
    components.insert(components.end(), blankCount, FontComponent{blank});
    font.addGlyph({1000, {}, {}, components});
    return font;
}

constexpr unsigned int wideGlyph = 28;

/// Under a sanitizer fewer parts: FreeType grows a block for each part, which would take minutes.
constexpr unsigned int partsOfRow = IS_SANITIZED ? 50 : 244;

/// Glyph 4 has 60,000 parts: 244 rows of two boxes and 242 blanks each. Under a sanitizer it has fewer.
FontBuilder makeFontWithRows() {
    FontBuilder font;
    font.addGlyph(Testing::makeBoxGlyph(20, 0, 0, 90, 2));
    font.addGlyph(FontGlyph());
    std::vector<FontComponent> row(partsOfRow, FontComponent{2});
    row.front() = {1, 0, 0};
    row.back() = {1, 200, 0};
    font.addGlyph({1000, {}, {}, row});
    std::vector<FontComponent> rows;
    for (unsigned int i = 0; i < partsOfRow; ++i) {
        rows.push_back({3, 0, static_cast<int>(i * 4)});
    }
    font.addGlyph({1000, {}, {}, rows});
    return font.map('A', 1);
}

/// The pixels of a bitmap, row by row.
Bytes getPixels(const FT_Bitmap& bitmap) {
    Bytes pixels;
    for (unsigned int row = 0; row < bitmap.rows; ++row) {
        const unsigned char* const begin = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        pixels.insert(pixels.end(), begin, begin + bitmap.width);
    }
    return pixels;
}

/// Renders a glyph with FreeType alone.
Bytes renderPlainly(const Bytes& file, unsigned int glyph, int size) {
    const FreeTypeSpy::Pause pause;
    FT_Library library = nullptr;
    FT_Init_FreeType(&library);
    FT_Face face = nullptr;
    FT_New_Memory_Face(library, file.data(), static_cast<FT_Long>(file.size()), 0, &face);
    FT_Set_Char_Size(face, 0, size * 64L, 72, 0);
    EXPECT_EQ(FT_Load_Glyph(face, glyph, FT_LOAD_NO_BITMAP), 0);
    EXPECT_EQ(FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL), 0);
    const Bytes pixels = getPixels(face->glyph->bitmap);
    FT_Done_FreeType(library);
    return pixels;
}

void expectPlainPixels(const FontBuilder& font, unsigned int glyph) {
    const Bytes file = font.build();
    const Engine engine(file);
    for (const int size : {10, 13, 40}) {
        const auto bitmap = render(engine, makeKey(glyph, static_cast<float>(size)));
        const Bytes pixels = getPixels(bitmap->bitmap);
        EXPECT_FALSE(pixels.empty());
        EXPECT_TRUE(pixels == renderPlainly(file, glyph, size)) << glyph << " at " << size;
    }
}

/// The load flags that FreeType receives for glyph 1.
int getLoadFlags(const FontBuilder& font) {
    const Engine engine(font.build());
    const FacePtr face = engine.getFace();
    const FreeTypeSpy spy;
    engine.factory->getBitmapGlyph(makeKey(1).makeBitmap(), face, false);
    const std::string prefix = "FT_Load_Glyph 1 ";
    const std::string line = spy.getLines({"FT_Load_Glyph"}).at(0);
    EXPECT_THAT(line, testing::StartsWith(prefix));
    return std::stoi(line.substr(prefix.size()));
}

/// Glyph 1 is a box, glyph 2 contains itself. The engine always uses the auto-hinter for this family.
FontBuilder makeFontWithLoop() {
    FontBuilder font("Charter");
    font.addGlyph(Testing::makeBoxGlyph(500, 0, 0, 500, 500));
    font.addGlyph({500, {}, {}, {{1}, {2}}});
    return font.map('A', 1);
}

} // namespace

TEST(HostileComposite, FailsIfItNestsTooDeepForTheStack) {
    const Engine engine(makeChain(60'000).build());
    Testing::runOnStack(8 << 20, [&] {
        for (const unsigned long glyph : {16'000UL, 60'000UL}) {
            EXPECT_EQ(getRenderingError(engine, glyph), getLoadingError(glyph));
            EXPECT_EQ(getOutlineError(engine, glyph), getLoadingError(glyph));
        }
        EXPECT_GT(render(engine, makeKey(5000))->bitmap.rows, 0U);
        EXPECT_EQ(getOutlineError(engine, 5000), "no exception");
    });
}

TEST(HostileComposite, FailsOnASmallStackButNotOnALargeOne) {
    const Engine engine(makeChain(60'000).build());
    Testing::runOnStack(256 << 10, [&] {
        EXPECT_EQ(getRenderingError(engine, 2000), getLoadingError(2000));
        EXPECT_EQ(getRenderingError(engine, 60'000), getLoadingError(60'000));
        EXPECT_GT(render(engine, makeKey(150))->bitmap.rows, 0U);
        EXPECT_EQ(getOutlineError(engine, 150), "no exception");
    });
    Testing::runOnStack(8 << 20, [&] { EXPECT_GT(render(engine, makeKey(2000))->bitmap.rows, 0U); });
}

TEST(HostileComposite, FailsIfItContainsItself) {
    const Engine engine(makeFontWithLoop().build());
    EXPECT_EQ(getRenderingError(engine, 2), getLoadingError(2));
    EXPECT_EQ(getRenderingError(engine, 2), getLoadingError(2)) << "nothing was cached";
    EXPECT_EQ(getOutlineError(engine, 2), getLoadingError(2));
    EXPECT_GT(render(engine, makeKey(1))->bitmap.rows, 0U);
}

TEST(HostileComposite, IsDrawnAsByFreeTypeIfItIsOnlyWide) {
    expectPlainPixels(makeFontWithWideGlyph(256, 0), wideGlyph);
    expectPlainPixels(makeFontWithWideGlyph(1000, 1000), wideGlyph);
    expectPlainPixels(makeFontWithRows(), 4);
}

TEST(HostileComposite, FailsAsInFreeTypeIfItHasTooManyPoints) {
    FontBuilder font;
    font.addGlyph({500, Testing::FontOutline(256, Testing::makeBox(0, 0, 9, 9).front()), {}});
    font.addGlyph({500, {}, {}, std::vector<FontComponent>(40, FontComponent{1})});
    const Engine engine(font.map('A', 1).build());
    EXPECT_EQ(getRenderingError(engine, 2), "FT_Load_Glyph() failed, error: 10, glyph index: 2 ");
}

TEST(HostileComposite, DoesNotChangeThePixelsOfOtherGlyphs) {
    for (unsigned int glyph = 1; glyph < 26; ++glyph) {
        expectPlainPixels(makeFontWithWideGlyph(256, 0), glyph);
    }
    expectPlainPixels(makeFontWithWideGlyph(8000, 52'000), 2);
    expectPlainPixels(makeFontWithWideGlyph(30'000, 40'000), 2);
    expectPlainPixels(makeFontWithWideGlyph(256, 0).map('Z', wideGlyph), 2);
}

TEST(HostileComposite, DisablesTheAutoHinterIfThatWouldLoadIt) {
    constexpr int asked = FT_LOAD_FORCE_AUTOHINT | FT_LOAD_NO_BITMAP;
    EXPECT_EQ(getLoadFlags(makeFontWithLoop()), asked);
    EXPECT_EQ(getLoadFlags(makeFontWithLoop().map(0xE9, 2)), asked) << "the auto-hinter does not measure é";
    EXPECT_EQ(getLoadFlags(makeFontWithLoop().map('o', 2)), asked | FT_LOAD_NO_AUTOHINT);
}

} // namespace Vell::FontEngine
