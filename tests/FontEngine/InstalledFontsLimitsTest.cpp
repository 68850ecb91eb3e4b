// That the bounds on what a hostile font may take are far from what the fonts of this machine take.

#include <support/OpenedFont.h>

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>
#include <FontEngine/InstalledFonts.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>

namespace Vell::FontEngine {
namespace {

/// What of a bitmap a text shows.
std::string describe(const FT_BitmapGlyphRec_& glyph) {
    const FT_Bitmap& bitmap = glyph.bitmap;
    const std::size_t size = std::size_t(static_cast<unsigned int>(std::abs(bitmap.pitch))) * bitmap.rows;
    return std::to_string(glyph.left) + " " + std::to_string(glyph.top) + " " + std::to_string(bitmap.width) +
           " " + std::to_string(bitmap.rows) + " " +
           std::string(reinterpret_cast<const char*>(bitmap.buffer), size);
}

std::string renderAsFreeTypeDoes(FT_Face face, unsigned long glyph) {
    EXPECT_EQ(FT_Load_Glyph(face, static_cast<FT_UInt>(glyph), FT_LOAD_RENDER), 0);
    FT_Glyph copy = nullptr;
    EXPECT_EQ(FT_Get_Glyph(face->glyph, &copy), 0);
    const std::string description = describe(*reinterpret_cast<FT_BitmapGlyph>(copy));
    FT_Done_Glyph(copy);
    return description;
}

TEST(InstalledFontsLimits, RenderLargeLettersAsFreeTypeDoes) {
    const Testing::OpenedFont font(readFile("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"));
    const Engine engine(*font.bytes);
    for (const float size : {1000.0F, 8000.0F}) {
        const unsigned long glyph = FT_Get_Char_Index(font.get(), 'W');
        const BitmapGlyphInfo key =
            KeyFields().with(&KeyFields::glyph, glyph).with(&KeyFields::size, size).makeBitmap();
        ASSERT_EQ(FT_Set_Char_Size(font.get(), 0, static_cast<FT_F26Dot6>(size * 64.0F), 72, 0), 0);
        const std::string rendered = describe(*engine.getFace()->getBitmapGlyph(key, false));
        EXPECT_TRUE(rendered == renderAsFreeTypeDoes(font.get(), glyph)) << rendered.substr(0, 30);
    }
}

} // namespace
} // namespace Vell::FontEngine
