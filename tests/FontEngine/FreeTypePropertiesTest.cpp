// The FreeType properties in a user's environment do not affect the engine: it renders the same for all
// users.

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/CffFont.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace Vell::FontEngine {
namespace {

using Testing::Bytes;

/// Sets the variable that FT_Init_FreeType reads.
class EnvironmentProperties {
public:
    explicit EnvironmentProperties(const char* properties) { setenv("FREETYPE_PROPERTIES", properties, 1); }
    EnvironmentProperties(const EnvironmentProperties&) = delete;
    EnvironmentProperties& operator=(const EnvironmentProperties&) = delete;
    ~EnvironmentProperties() { unsetenv("FREETYPE_PROPERTIES"); }
};

std::string describe(const FT_Bitmap& bitmap) {
    const std::size_t size = std::size_t(bitmap.rows) * static_cast<unsigned int>(bitmap.pitch);
    return std::to_string(bitmap.width) + " " + std::to_string(bitmap.rows) + " " +
           std::string(reinterpret_cast<const char*>(bitmap.buffer), size);
}

/// Renders glyph 1 at 10 pixels with the engine.
std::string renderByEngine(const Bytes& file) {
    const Engine engine(file);
    return describe(engine.getFace()->getBitmapGlyph(KeyFields().makeBitmap(), false)->bitmap);
}

/// Does the same with a library that FT_Init_FreeType made.
std::string renderPlainly(const Bytes& file) {
    FT_Library library = nullptr;
    FT_Face face = nullptr;
    EXPECT_EQ(FT_Init_FreeType(&library), 0);
    EXPECT_EQ(FT_New_Memory_Face(library, file.data(), static_cast<FT_Long>(file.size()), 0, &face), 0);
    EXPECT_EQ(FT_Set_Char_Size(face, 0, 640, 72, 0), 0);
    EXPECT_EQ(FT_Load_Glyph(face, 1, FT_LOAD_NO_BITMAP | FT_LOAD_RENDER), 0);
    const std::string look = describe(face->glyph->bitmap);
    FT_Done_Face(face);
    FT_Done_FreeType(library);
    return look;
}

void expectNoInfluence(const char* properties, const Bytes& file) {
    const std::string look = renderByEngine(file);
    ASSERT_EQ(renderPlainly(file), look);
    const EnvironmentProperties environment(properties);
    EXPECT_NE(renderPlainly(file), look) << "FreeType itself follows them";
    EXPECT_EQ(renderByEngine(file), look);
}

TEST(FreeTypeProperties, OfTheEnvironmentDoNotChangeTheInterpreter) {
    constexpr unsigned char alongX = 0x01;         // SVTCA[x]
    constexpr unsigned char pushTwoBytes = 0xB1;   // PUSHB[1]
    constexpr unsigned char roundToTheGrid = 0x2F; // MDAP[1]: only version 35 obeys it along x
    Testing::FontBuilder font("Test Sans");
    Testing::FontGlyph glyph = Testing::makeBoxGlyph(600, 150, 0, 500, 700);
    glyph.instructions = {alongX, pushTwoBytes, 0, 1, roundToTheGrid, roundToTheGrid};
    font.map('A', font.addGlyph(glyph));
    expectNoInfluence("truetype:interpreter-version=35", font.build());
}

TEST(FreeTypeProperties, OfTheEnvironmentDoNotDarkenStems) {
    Testing::CffFont font;
    font.charStrings.assign(35, Testing::makeBoxCharString());
    expectNoInfluence("cff:no-stem-darkening=0", font.build());
}

} // namespace
} // namespace Vell::FontEngine
