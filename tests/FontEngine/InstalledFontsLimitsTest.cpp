// The fonts of this machine stay far below the bounds for hostile fonts.

#include <support/OpenedFont.h>

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>
#include <FontEngine/InstalledFonts.h>
#include <FontEngine/Private/FE_RasterWork.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace Vell::FontEngine {
namespace {

/// Opens each font that both FreeType and the engine can open, and returns their number.
template <class Visit>
std::size_t visitInstalledFonts(const Visit& visit) {
    std::size_t fonts = 0;
    for (const std::filesystem::path& path : listInstalledFonts()) {
        SCOPED_TRACE(path.string());
        try {
            visit(Testing::OpenedFont(readFile(path)));
            ++fonts;
        } catch (const FontLoaders::FreeTypeException&) {
            continue; // not a font, or a font that the engine refuses
        }
    }
    return fonts;
}

/// The total length of an outline's control polygons.
double measure(const FT_Outline& outline) {
    double length = 0;
    for (int i = 1; i < outline.n_points; ++i) {
        length += static_cast<double>(std::abs(outline.points[i].x - outline.points[i - 1].x) +
                                      std::abs(outline.points[i].y - outline.points[i - 1].y));
    }
    return length;
}

/// The glyphs that need the most work: those with the longest outlines.
std::vector<FT_UInt> findLongestOutlines(FT_Face face) {
    constexpr std::ptrdiff_t wanted = 20;
    std::vector<std::pair<double, FT_UInt>> glyphs;
    for (FT_UInt glyph = 0; glyph < static_cast<FT_UInt>(face->num_glyphs); ++glyph) {
        if (FT_Load_Glyph(face, glyph, FT_LOAD_NO_SCALE) == 0) {
            glyphs.emplace_back(-measure(face->glyph->outline), glyph);
        }
    }
    const auto end = glyphs.begin() + std::min<std::ptrdiff_t>(wanted, glyphs.end() - glyphs.begin());
    std::partial_sort(glyphs.begin(), end, glyphs.end());
    std::vector<FT_UInt> longest;
    std::transform(glyphs.begin(), end, std::back_inserter(longest), [](const auto& g) { return g.second; });
    return longest;
}

void expectLittleWork(FT_Face face, unsigned int size, FT_Render_Mode mode) {
    FT_Outline& outline = face->glyph->outline;
    FT_BBox box;
    FT_Outline_Get_CBox(&outline, &box);
    const std::int64_t tenth = Internal::getMaxRasterWork(size) / 10;
    EXPECT_LT(Internal::estimateRasterWork(outline, box, mode), tenth) << "size " << size << " mode " << mode;
}

TEST(InstalledFontsLimits, NeedLessThanATenthOfTheRasteriserLimit) {
    const std::size_t fonts = visitInstalledFonts([](const Testing::OpenedFont& font) {
        if (!FT_IS_SCALABLE(font.get())) {
            return;
        }
        for (const FT_UInt glyph : findLongestOutlines(font.get())) {
            SCOPED_TRACE("glyph " + std::to_string(glyph));
            for (const unsigned int size : {6U, 25U, 100U, 400U}) {
                ASSERT_EQ(FT_Set_Pixel_Sizes(font.get(), 0, size), 0);
                ASSERT_EQ(FT_Load_Glyph(font.get(), glyph, FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP), 0);
                expectLittleWork(font.get(), size, FT_RENDER_MODE_NORMAL);
                expectLittleWork(font.get(), size, FT_RENDER_MODE_LCD);
            }
        }
    });
    EXPECT_GE(fonts, 6U) << "the tests' packages alone have more";
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
