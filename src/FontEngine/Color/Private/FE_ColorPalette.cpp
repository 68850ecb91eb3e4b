#include <FontEngine/Color/Private/FE_ColorPaintWalker.h>

#include FT_COLOR_H

namespace Vell::FontEngine::Internal {

namespace {

std::vector<PaintColor> readPalette(FT_Face face, unsigned short index) {
    FT_Palette_Data data{};
    FT_Color* colors = nullptr;
    if (FT_Palette_Data_Get(face, &data) != FT_Err_Ok || data.num_palettes == 0 ||
        FT_Palette_Select(face, index < data.num_palettes ? index : FT_UShort(0), &colors) != FT_Err_Ok ||
        colors == nullptr) {
        return {};
    }
    std::vector<PaintColor> palette;
    palette.reserve(data.num_palette_entries);
    for (FT_UShort i = 0; i < data.num_palette_entries; ++i) {
        palette.emplace_back(colors[i].red, colors[i].green, colors[i].blue, colors[i].alpha);
    }
    return palette;
}

} // namespace

ResolvedPalette resolvePalette(FT_Face face, const ColorPalette& palette, const PaintColor& foreground) {
    ResolvedPalette resolved{readPalette(face, palette.index), foreground};
    for (const ColorPalette::Override& replacement : palette.overrides) {
        if (replacement.entry < resolved.colors.size()) {
            resolved.colors[replacement.entry] = replacement.color;
        }
    }
    return resolved;
}

} // namespace Vell::FontEngine::Internal
