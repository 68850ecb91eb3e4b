// A window that shows a text in a variable font whose weight goes up and down, and how the caches of the
// factory stay within their limits. Needs SDL2, and the variable font Inter.
//
//     moving-axis [TEXT]
//     moving-axis --frames N PICTURE.png     draws N frames without a window, the last one into a picture
//
// The second way prints what the caches hold in the end.

#include "../SdlWindow.h"
#include "AxisView.h"

#include <exception>
#include <iostream>
#include <string>

namespace {

constexpr int width = 800;
constexpr int height = 400;
constexpr const char* usualText = "Weight";

bool isClosed() {
    SDL_Event event{};
    while (SDL_PollEvent(&event) != 0) {
        if (event.type == SDL_QUIT) {
            return true;
        }
    }
    return false;
}

void showWindow(const std::string& text) {
    constexpr unsigned int pause = 15; // milliseconds
    AxisView view(text);
    const SdlWindow window("moving-axis", width, height);
    while (!isClosed()) {
        const float seconds = static_cast<float>(SDL_GetTicks()) / 1000.0F;
        window.show([&](cairo_surface_t* surface) { view.draw(surface, seconds); });
        SDL_Delay(pause);
    }
}

void drawFrames(int count, const char* file) {
    constexpr float framesInSecond = 25.0F;
    AxisView view(usualText);
    const auto picture = Vell::CairoAdapter::makeImageSurface(width, height);
    for (int frame = 0; frame < count; ++frame) {
        view.draw(picture.get(), static_cast<float>(frame) / framesInSecond);
    }
    Vell::CairoAdapter::throwIfFailed(cairo_surface_write_to_png(picture.get(), file));
    for (const std::string& line : view.listFigures()) {
        std::cout << line << '\n';
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 4 && argv[1] == std::string("--frames")) {
            drawFrames(std::stoi(argv[2]), argv[3]);
        } else {
            showWindow(argc > 1 ? argv[1] : usualText);
        }
    } catch (const std::exception& error) {
        std::cerr << "moving-axis: " << error.what() << '\n';
        return 1;
    }
}
