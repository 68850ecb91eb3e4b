// The first appearance of a glyph, and the colouring of a sub-pixel bitmap.

#include "support/BenchEngine.h"

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>

#include <benchmark/benchmark.h>

namespace Vell::Benchmarks {

namespace {

constexpr unsigned int firstGlyph = 36; // the letters of DejaVu Sans
constexpr unsigned int glyphCount = 96;

FontEngine::BitmapGlyphInfo makeKey(const BenchEngine& engine, unsigned int glyph, float size,
                                    FT_Render_Mode mode = FT_RENDER_MODE_NORMAL) {
    return FontEngine::BitmapGlyphInfo(engine.faceInfo, mode, glyph, 'x', size, {1.0F, 1.0F}, 1.0F, 0, true,
                                       FontEngine::GlyphTransform::None);
}

/// Renders glyphs into an empty cache. `sizes` of them are asked for in turn.
void renderCold(benchmark::State& state, unsigned int sizes) {
    const BenchEngine engine(getEnglish().fontFile);
    for (auto step : state) {
        for (unsigned int i = 0; i < glyphCount; ++i) {
            const float size = pixelSize + static_cast<float>(i % sizes);
            benchmark::DoNotOptimize(engine.factory->getBitmapGlyph(makeKey(engine, firstGlyph + i, size),
                                                                    engine.font.getFace(), false));
        }
        state.PauseTiming();
        engine.factory->reset(0, 0); // the font keeps its face
        state.ResumeTiming();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * glyphCount));
}

/// The three calls of FreeType on a face that has its size.
void callFreeType(benchmark::State& state) {
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    const FontLoaders::FTFacePtr face =
        FontLoaders::createFontFace(library, readFontFile(getEnglish().fontFile));
    FT_Set_Char_Size(face.get(), 0, static_cast<FT_F26Dot6>(pixelSize * 64.0F), 72, 0);
    for (auto step : state) {
        for (unsigned int i = 0; i < glyphCount; ++i) {
            FT_Glyph glyph = nullptr;
            FT_Load_Glyph(face.get(), firstGlyph + i, FT_LOAD_NO_BITMAP);
            FT_Get_Glyph(face->glyph, &glyph);
            FT_Glyph_To_Bitmap(&glyph, FT_RENDER_MODE_NORMAL, nullptr, 1);
            FT_Done_Glyph(glyph);
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * glyphCount));
}

/// Colours one glyph of a size; an item is a pixel.
void colour(benchmark::State& state, float size) {
    const BenchEngine engine(getEnglish().fontFile);
    const auto glyph = engine.factory->getBitmapGlyph(makeKey(engine, firstGlyph, size, FT_RENDER_MODE_LCD),
                                                      engine.font.getFace(), false);
    std::size_t pixels = 0;
    for (auto step : state) {
        const auto image = FontEngine::Internal::getColoredGlyphImage(*glyph, {20, 90, 200, 255});
        pixels += std::size_t(image->rows) * image->width;
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(pixels));
    state.SetLabel(std::to_string(glyph->bitmap.width / 3) + " x " + std::to_string(glyph->bitmap.rows));
}

BENCHMARK_CAPTURE(renderCold, one size, 1)->Name("cold glyph/engine");
BENCHMARK_CAPTURE(renderCold, two sizes, 2)->Name("cold glyph/engine, two sizes in turn");
BENCHMARK(callFreeType)->Name("cold glyph/FreeType");
BENCHMARK_CAPTURE(colour, small, 14.0F)->Name("colour 14/engine");
BENCHMARK_CAPTURE(colour, large, 60.0F)->Name("colour 60/engine");

} // namespace

} // namespace Vell::Benchmarks
