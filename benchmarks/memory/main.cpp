// Measures the memory that the engine holds, and writes it to the standard output as JSON.
//
// Bytes are those that the allocator has handed out and not taken back (mallinfo2: its main arena and its
// mappings), whether operator new or FreeType requested them. They include what the allocator adds to each
// block. Run this with GLIBC_TUNABLES=glibc.malloc.tcache_count=0, since blocks in the thread's cache count
// as handed out. The peak is the resident size that the kernel reports (getrusage), including the font file.

#include "../support/BenchEngine.h"

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/FreeType.h>
#include <TextLayout/TextLayout.h>

#include <malloc.h>
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>

namespace Vell::Benchmarks {

namespace {

double getHeapBytes() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

double getPeakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024.0 / 1e6;
}

struct Figure {
    std::string name;
    double value;
    std::string unit;
};

/// Must be measured first, before anything else touches memory.
std::vector<Figure> measurePeak() {
    const double before = getPeakMegabytes();
    const auto bytes = readFontFile(getCjk().fontFile);
    const BenchEngine engine(bytes);
    return {{"peak resident size, before anything", before, "MB"},
            {"peak resident size, Noto CJK open", getPeakMegabytes(), "MB"},
            {"font file, Noto CJK", static_cast<double>(bytes->size()) / 1e6, "MB"}};
}

/// Caches several sizes of all letters, more than the cache's first table of buckets holds.
Figure measureCachedGlyphs() {
    const BenchEngine engine(getEnglish());
    const Gfx::CharMap& charMap = engine.font.getFace()->getBasicMetrics().getCharMap();
    constexpr int sizeCount = 50;
    const auto getGlyph = [&](unsigned int code, int size) {
        const FontEngine::BitmapGlyphInfo key(engine.faceInfo, FT_RENDER_MODE_NORMAL,
                                              charMap[code].glyphIndex, code, static_cast<float>(size + 8),
                                              {1.0F, 1.0F}, 1.0F, 0, true, FontEngine::GlyphTransform::None);
        return engine.factory->getBitmapGlyph(key, engine.font.getFace(), false);
    };
    for (unsigned int code = 'A'; code <= 'z';
         ++code) { // lets FreeType allocate what it needs to render any glyph
        getGlyph(code, sizeCount + 1);
    }
    const double before = getHeapBytes();
    double pixels = 0.0;
    int count = 0;
    for (int size = 0; size < sizeCount; ++size) {
        for (unsigned int code = 'A'; code <= 'z'; ++code, ++count) {
            const FT_Bitmap& bitmap = getGlyph(code, size)->bitmap;
            pixels += static_cast<double>(std::abs(bitmap.pitch)) * bitmap.rows;
        }
    }
    return {"cached glyph, beyond its pixels", (getHeapBytes() - before - pixels) / count, "bytes"};
}

Figure measureCharMap(const std::string& name, const std::string& fontFile) {
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    const FontLoaders::FTFacePtr face = FontLoaders::createFontFace(library, readFontFile(fontFile));
    FontEngine::Internal::makeCharMap(
        face, FontEngine::GlyphTransform::None); // lets FreeType allocate what it keeps
    const double before = getHeapBytes();
    const Gfx::CharMap map = FontEngine::Internal::makeCharMap(face, FontEngine::GlyphTransform::None);
    return {"mapped character, " + name, (getHeapBytes() - before) / static_cast<double>(map.size()),
            "bytes"};
}

Figure measureGlyphRecord() {
    return {"sizeof(BitmapGlyph)", static_cast<double>(sizeof(FontEngine::BitmapGlyph)), "bytes"};
}

Figure measureRun() {
    const BenchEngine engine(getEnglish());
    IdlePainter idle;
    FontEngine::RasterTextPainter painter(idle, idle, false);
    const auto layOut = [&] {
        return painter.createGlyphRun(getEnglish().lines.front(), engine.extFontInfo, engine.font, 1.0F,
                                      {1.0F, 1.0F});
    };
    layOut();
    const double before = getHeapBytes();
    const FontEngine::BitmapGlyphRun run = layOut();
    return {"glyph of a run", (getHeapBytes() - before) / static_cast<double>(run.getGlyphs().size()),
            "bytes"};
}

/// A page of prose.
Figure measureShapedText() {
    const BenchEngine engine(getEnglish());
    const TextLayout::TextShaper shaper(engine.factory);
    std::string page;
    for (int i = 0; i < 6; ++i) {
        for (const std::string& line : getEnglish().lines) {
            page += line + "\n";
        }
    }
    shaper.shape(page, engine.extFontInfo); // caches the words
    const double before = getHeapBytes();
    const auto text = shaper.shape(page, engine.extFontInfo);
    return {"glyph of a shaped text",
            (getHeapBytes() - before) / static_cast<double>(text->getGlyphs().size()), "bytes"};
}

void print(const std::vector<Figure>& figures) {
    std::printf("{\n  \"memory\": [\n");
    for (std::size_t i = 0; i < figures.size(); ++i) {
        std::printf("    {\"name\": \"%s\", \"value\": %.3f, \"unit\": \"%s\"}%s\n", figures[i].name.c_str(),
                    figures[i].value, figures[i].unit.c_str(), i + 1 < figures.size() ? "," : "");
    }
    std::printf("  ]\n}\n");
}

} // namespace

} // namespace Vell::Benchmarks

int main() {
    using namespace Vell::Benchmarks;
    std::vector<Figure> figures = measurePeak();
    figures.push_back(measureCachedGlyphs());
    figures.push_back(measureCharMap("DejaVu", getEnglish().fontFile));
    figures.push_back(measureCharMap("Noto CJK", getCjk().fontFile));
    figures.push_back(measureGlyphRecord());
    figures.push_back(measureRun());
    figures.push_back(measureShapedText());
    print(figures);
    return 0;
}
