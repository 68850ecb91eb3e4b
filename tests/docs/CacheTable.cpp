// What typical texts put into the caches of a factory: prints the table of docs/guide.md.
//
// Ends with 77, "skipped", where the fonts or the version of FreeType are others than those of the table: the
// bytes of a bitmap are FreeType's.

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include "../../benchmarks/support/Workload.h"

#include <FontEngine/FontEngine.h>

#include <cstdio>
#include <vector>

namespace Vell::Docs {

namespace {

using Benchmarks::Workload;
using FontEngine::FactoryCacheFigures;

constexpr int skipped = 77;

struct Row {
    const char* name;
    const Workload& text;
    float size;
    float devicePixelRatio;
};

std::vector<Row> getRows() {
    return {{"a paragraph in English", Benchmarks::getEnglish(), 16.0F, 1.0F},
            {"the same, twice the size", Benchmarks::getEnglish(), 32.0F, 1.0F},
            {"the same, on a dense screen", Benchmarks::getEnglish(), 16.0F, 2.0F},
            {"Russian, Greek and accents", Benchmarks::getMixed(), 16.0F, 1.0F},
            {"the labels of a window", Benchmarks::getLabels(), 16.0F, 1.0F},
            {"Chinese and Japanese", Benchmarks::getCjk(), 16.0F, 1.0F},
            {"a form with lines to fill in", Benchmarks::getForm(), 16.0F, 1.0F}};
}

/// Draws the lines of a text in both ways over a new factory.
FactoryCacheFigures measure(const Row& row) {
    const auto factory = FontEngine::FontFactory::create("DejaVu Sans");
    const auto face = makeNNPtr<const FontEngine::Internal::FontFaceInfo>(row.text.fontFamily, false, false);
    const auto info =
        makeNNPtr<const FontEngine::Internal::FontInfo>(face, row.size, Gfx::TextPositionType::Normal);
    const auto style = makeNNPtr<const FontEngine::Internal::ExtFontInfo>(info);
    const FontEngine::Font font = factory->getFont(info);
    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
    for (const std::string& line : row.text.lines) {
        FontEngine::RasterTextPainter(painter, glyphPainter, false)
            .drawText(line, style, font, {0, 0, 0, 255}, row.devicePixelRatio);
        FontEngine::VectorTextPainter(painter).drawText(line, style, font);
    }
    return factory->getCacheFigures();
}

void print(const Row& row) {
    const FactoryCacheFigures figures = measure(row);
    std::printf("| %s | %g px, ratio %g | %zu | %llu | %llu | %llu | %llu | %llu |\n", row.name,
                static_cast<double>(row.size), static_cast<double>(row.devicePixelRatio),
                row.text.countCharacters(), static_cast<unsigned long long>(figures.bitmaps.entries),
                static_cast<unsigned long long>(figures.bitmaps.bytes),
                static_cast<unsigned long long>(figures.coloredImages.entries),
                static_cast<unsigned long long>(figures.coloredImages.bytes),
                static_cast<unsigned long long>(figures.outlines.entries));
}

bool isInstalled(const std::string& family) {
    const auto loader = FontLoaders::createPlatformDefaultFontLoader(family);
    return loader->loadFont(makeNNPtr<const FontEngine::Internal::FontFaceInfo>(family, false, false)) !=
           nullptr;
}

bool isMeasurable() {
    FT_Int major = 0;
    FT_Int minor = 0;
    FT_Int patch = 0;
    FT_Library_Version(FontLoaders::createFreeTypeLibrary().get(), &major, &minor, &patch);
    return major == 2 && minor == 12 && patch == 1 && isInstalled(Benchmarks::getEnglish().fontFamily) &&
           isInstalled(Benchmarks::getCjk().fontFamily);
}

} // namespace

} // namespace Vell::Docs

int main() {
    using namespace Vell::Docs;
    if (!isMeasurable()) {
        return skipped;
    }
    std::printf(
        "| Text | Font | Characters | Bitmaps | their bytes | Coloured images | their bytes | Outlines |\n"
        "| --- | --- | --: | --: | --: | --: | --: | --: |\n");
    for (const Row& row : getRows()) {
        print(row);
    }
    return 0;
}
