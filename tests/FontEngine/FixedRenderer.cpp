#include <FontEngine/FixedRenderer.h>

#include FT_MODULE_H
#include FT_RENDER_H

#include <stdexcept>
#include <utility>

namespace Vell::FontEngine {

namespace {

FixedBitmap fixed;

FT_Error renderFixed(FT_Renderer, FT_GlyphSlot slot, FT_Render_Mode, const FT_Vector*) {
    slot->format = FT_GLYPH_FORMAT_BITMAP;
    slot->bitmap = FT_Bitmap();
    slot->bitmap.rows = fixed.rows;
    slot->bitmap.width = fixed.width;
    slot->bitmap.pitch = fixed.pitch;
    slot->bitmap.pixel_mode = fixed.pixelMode;
    slot->bitmap.num_grays = 256;
    slot->bitmap.buffer = fixed.pixels.empty() ? nullptr : fixed.pixels.data(); // FreeType makes a copy
    slot->bitmap_left = fixed.left;
    slot->bitmap_top = fixed.top;
    return FT_Err_Ok;
}

FT_Error ignoreTransform(FT_Renderer, FT_GlyphSlot, const FT_Matrix*, const FT_Vector*) {
    return FT_Err_Ok;
}

int makeNoRaster(void*, FT_Raster* raster) {
    *raster = nullptr;
    return 0;
}

FT_Raster_Funcs noRaster = {FT_GLYPH_FORMAT_OUTLINE,
                            makeNoRaster,
                            [](FT_Raster, unsigned char*, unsigned long) {},
                            [](FT_Raster, unsigned long, void*) { return 0; },
                            [](FT_Raster, const FT_Raster_Params*) { return 0; },
                            [](FT_Raster) {}};

/// FreeType keeps its state of a renderer in a record whose size it does not publish: this is ample.
constexpr FT_Long recordSize = 1024;

const FT_Renderer_Class rendererClass = {
    {FT_MODULE_RENDERER, recordSize, "fixed", 0x10000, 0x20000, nullptr, nullptr, nullptr, nullptr},
    FT_GLYPH_FORMAT_OUTLINE,
    renderFixed,
    ignoreTransform,
    nullptr,
    nullptr,
    &noRaster};

} // namespace

void setFixedRendering(FT_Face face, FixedBitmap bitmap) {
    fixed = std::move(bitmap);
    const FT_Library library = face->glyph->library;
    if (FT_Get_Module(library, "fixed") == nullptr && FT_Add_Module(library, &rendererClass.root) != 0) {
        throw std::runtime_error("FreeType refuses the renderer");
    }
    FT_Set_Renderer(library, reinterpret_cast<FT_Renderer>(FT_Get_Module(library, "fixed")), 0, nullptr);
}

} // namespace Vell::FontEngine
