// SDL_ttf: the measurement of a text, and its drawing as a new blended picture each time.

#include "../support/Items.h"
#include "../support/Scene.h"

#include <SDL_ttf.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace Vell::Benchmarks {

namespace {

using SdlFont = std::unique_ptr<TTF_Font, void (*)(TTF_Font*)>;
using SdlSurface = std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)>;

/// The library stays initialised until the process ends.
void startSdl() {
    static const bool isStarted = TTF_Init() == 0;
    if (!isStarted) {
        throw std::runtime_error(TTF_GetError());
    }
}

SdlFont openFont(const Workload& workload, int ratio) {
    startSdl();
    // At its 72 dots per inch, a point is a pixel. The first face of the collection is the Japanese one.
    SdlFont font(TTF_OpenFont(workload.fontFile.c_str(), static_cast<int>(workload.pixelSize) * ratio),
                 TTF_CloseFont);
    if (!font) {
        throw std::runtime_error(TTF_GetError());
    }
    return font;
}

SdlSurface makeSdlPage(const Scene& scene) {
    SdlSurface page(
        SDL_CreateRGBSurfaceWithFormat(0, scene.getWidth(), scene.getHeight(), 32, SDL_PIXELFORMAT_ARGB8888),
        SDL_FreeSurface);
    if (!page) {
        throw std::runtime_error(SDL_GetError());
    }
    SDL_FillRect(page.get(), nullptr, 0xFFFFFFFFU);
    return page;
}

void measure(benchmark::State& state, const Workload& workload) {
    const SdlFont font = openFont(workload, 1);
    int linesWithWidth = 0;
    for (auto step : state) {
        for (const std::string& line : workload.lines) {
            int width = 0;
            int height = 0;
            TTF_SizeUTF8(font.get(), line.c_str(), &width, &height);
            linesWithWidth += width > 0 ? 1 : 0;
        }
    }
    if (linesWithWidth == 0) {
        state.SkipWithError("no line has a width");
    }
    countItems(state, workload.countCharacters());
}

void draw(benchmark::State& state, const Scene& scene) {
    const SdlFont font = openFont(scene.workload, scene.ratio);
    const SdlSurface page = makeSdlPage(scene);
    const PixelView pixels{static_cast<const unsigned char*>(page->pixels), page->pitch, page->w, page->h};
    const cinder::ColorAT<unsigned char>& ink = scene.workload.ink;
    const int ascent = TTF_FontAscent(font.get());
    drawPage(state, scene, pixels, [&](std::size_t line, double y) {
        const SdlSurface text(TTF_RenderUTF8_Blended(font.get(), scene.workload.lines[line].c_str(),
                                                     {ink.r, ink.g, ink.b, 255}),
                              SDL_FreeSurface);
        SDL_Rect place{static_cast<int>(leftMargin) * scene.ratio, static_cast<int>(y) * scene.ratio - ascent,
                       0, 0};
        SDL_BlitSurface(text.get(), nullptr, page.get(), &place);
    });
}

std::string getVersion() {
    const SDL_version* const version = TTF_Linked_Version();
    return std::to_string(version->major) + "." + std::to_string(version->minor) + "." +
           std::to_string(version->patch);
}

const bool areRegistered = [] {
    benchmark::AddCustomContext("SDL_ttf", getVersion());
    for (const Workload* workload : getWorkloads()) {
        benchmark::RegisterBenchmark(("layout/" + workload->name + "/SDL_ttf").c_str(), measure, *workload);
    }
    for (const Scene& scene : getScenes()) {
        benchmark::RegisterBenchmark((scene.getName() + "/SDL_ttf").c_str(), draw, scene);
    }
    return true;
}();

} // namespace

} // namespace Vell::Benchmarks
