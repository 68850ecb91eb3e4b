#include "Scene.h"

namespace Vell::Benchmarks {

std::string Scene::getName() const {
    return (ratio == 1 ? "draw/" : "draw at ratio 2/") + workload.name;
}

int Scene::getWidth() const {
    constexpr int pageWidth = 1400;
    return pageWidth * ratio;
}

int Scene::getHeight() const {
    return static_cast<int>(lineHeight) * static_cast<int>(workload.lines.size() + 2) * ratio;
}

const std::vector<Scene>& getScenes() {
    static const std::vector<Scene> scenes = [] {
        std::vector<Scene> all;
        for (const Workload* workload : getWorkloads()) {
            all.push_back({*workload, 1});
            all.push_back({*workload, 2});
        }
        return all;
    }();
    return scenes;
}

PixelView viewPixels(const CairoAdapter::SurfacePtr& surface) {
    cairo_surface_flush(surface.get());
    return {cairo_image_surface_get_data(surface.get()), cairo_image_surface_get_stride(surface.get()),
            cairo_image_surface_get_width(surface.get()), cairo_image_surface_get_height(surface.get())};
}

CairoAdapter::SurfacePtr makePage(const Scene& scene) {
    CairoAdapter::SurfacePtr page = CairoAdapter::makeImageSurface(scene.getWidth(), scene.getHeight());
    const CairoAdapter::ContextPtr context = CairoAdapter::makeContext(page.get());
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    return page;
}

double measureInk(const PixelView& pixels) {
    double darkness = 0.0;
    for (int y = 0; y < pixels.height; ++y) {
        const unsigned char* const row = pixels.data + y * pixels.stride;
        for (int x = 0; x < pixels.width; ++x) {
            darkness += 255.0 - row[4 * x + 1]; // green
        }
    }
    return darkness / 255.0;
}

} // namespace Vell::Benchmarks
