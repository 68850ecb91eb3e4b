#pragma once

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <sstream>
#include <string>
#include <vector>

/// One line about a cache.
inline std::string describeCache(const char* name, const Vell::FontEngine::CacheFigures& figures) {
    std::ostringstream line;
    line << name << ": " << figures.entries << " entries, " << figures.hits << " hits, " << figures.misses
         << " misses, " << figures.evictions << " evictions";
    if (figures.maxBytes != 0) {
        line << ", " << figures.bytes << " of " << figures.maxBytes << " bytes";
    }
    return line.str();
}

/// A line about each cache of a factory.
inline std::vector<std::string> describeCaches(const Vell::FontEngine::FontFactory& factory) {
    const Vell::FontEngine::FactoryCacheFigures figures = factory.getCacheFigures();
    return {describeCache("font files", figures.fontFiles), describeCache("faces", figures.faces),
            describeCache("bitmaps", figures.bitmaps),
            describeCache("coloured images", figures.coloredImages),
            describeCache("outlines", figures.outlines)};
}

/// Draws the lines above the bottom of a surface. `factory` is another one than that of the caches, so that
/// drawing the lines does not change what they say.
inline void drawCacheLines(cairo_surface_t* surface, Vell::FontEngine::FontFactory& factory,
                           const std::vector<std::string>& lines) {
    constexpr float lineHeight = 14.0F;
    constexpr cinder::ColorAT<unsigned char> ink(90, 90, 90, 255);
    const auto font = Vell::FontEngine::describeFont("DejaVu Sans Mono", 12.0F);
    const auto bottom = static_cast<float>(cairo_image_surface_get_height(surface));
    Vell::CairoAdapter::CairoPainter painter(surface);
    Vell::CairoAdapter::CairoGlyphPainter glyphPainter(painter, ink);
    painter.translate({10.0F, bottom - lineHeight * static_cast<float>(lines.size())});
    for (const std::string& line : lines) {
        Vell::FontEngine::drawRasterText(factory, line, font, {painter, glyphPainter, ink});
        painter.translate({0.0F, lineHeight});
    }
}
