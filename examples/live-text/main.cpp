// A window that shows the text as it is typed, and how the caches of the factory serve it. Type, or press one
// of the keys in Keys.h. Needs SDL2.
//
//     live-text [TEXT]

#include "Keys.h"
#include "TextView.h"

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace {

/// Starts SDL; its end ends SDL with all windows.
struct Session {
    Session() { check(SDL_Init(SDL_INIT_VIDEO) == 0); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() { SDL_Quit(); }

    static void check(bool isGood) {
        if (!isGood) {
            throw std::runtime_error(SDL_GetError());
        }
    }
};

void show(SDL_Window* window, const TextView& view) {
    SDL_Surface* const screen = SDL_GetWindowSurface(window);
    if (screen == nullptr) {
        throw std::runtime_error(SDL_GetError());
    }
    const auto picture = Vell::CairoAdapter::makeImageSurface(screen->w, screen->h);
    view.draw(picture.get());
    const std::unique_ptr<SDL_Surface, decltype(&SDL_FreeSurface)> pixels(
        SDL_CreateRGBSurfaceWithFormatFrom(cairo_image_surface_get_data(picture.get()), screen->w, screen->h,
                                           32, cairo_image_surface_get_stride(picture.get()),
                                           SDL_PIXELFORMAT_ARGB8888),
        SDL_FreeSurface);
    Session::check(pixels != nullptr && SDL_BlitSurface(pixels.get(), nullptr, screen, nullptr) == 0);
    Session::check(SDL_UpdateWindowSurface(window) == 0);
}

void run(const char* text) {
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"); // the picture is made by the processor
    const Session session;
    SDL_Window* const window = SDL_CreateWindow("live-text", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED,
                                                800, 400, SDL_WINDOW_RESIZABLE);
    Session::check(window != nullptr);
    TextView view;
    view.text = text;
    SDL_Event event{};
    while (SDL_WaitEvent(&event) != 0 && event.type != SDL_QUIT) {
        if (event.type == SDL_TEXTINPUT) {
            view.text += event.text.text;
        } else if (event.type == SDL_KEYDOWN) {
            pressKey(event.key.keysym.sym, view);
        } else if (event.type != SDL_WINDOWEVENT) {
            continue;
        }
        show(window, view);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        run(argc > 1 ? argv[1] : "Type here");
    } catch (const std::exception& error) {
        std::cerr << "live-text: " << error.what() << '\n';
        return 1;
    }
}
