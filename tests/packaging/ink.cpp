// Counts the dark, not transparent pixels of a PNG file. Fails if there are none.

#include <cairo.h>

#include <cstdio>

int main(int argc, char** argv) {
    cairo_surface_t* image = cairo_image_surface_create_from_png(argc == 2 ? argv[1] : "");
    const unsigned char* pixels = cairo_image_surface_get_data(image);
    const int width = cairo_image_surface_get_width(image);
    const int height = cairo_image_surface_get_height(image);
    const bool hasAlpha = cairo_image_surface_get_format(image) == CAIRO_FORMAT_ARGB32;
    constexpr int bytesOfPixel = 4; // blue, green, red, alpha
    long dark = 0;
    for (int y = 0; y < height; ++y) {
        const unsigned char* row = pixels + static_cast<long>(y) * cairo_image_surface_get_stride(image);
        for (int x = 0; x < width; ++x) {
            const unsigned char* pixel = row + x * bytesOfPixel;
            dark += pixel[1] < 128 && (!hasAlpha || pixel[3] >= 128) ? 1 : 0;
        }
    }
    std::printf("%d x %d pixels, %ld of them dark\n", width, height, dark);
    cairo_surface_destroy(image);
    return dark > 0 ? 0 : 1;
}
