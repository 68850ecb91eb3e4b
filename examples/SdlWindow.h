#pragma once

#include <CairoAdapter/CairoAdapter.h>

#define SDL_MAIN_HANDLED
#include <SDL.h>

#include <memory>
#include <stdexcept>

inline void checkSdl(bool isGood) {
    if (!isGood) {
        throw std::runtime_error(SDL_GetError());
    }
}

/// The only window of a program. Starts SDL and ends it.
class SdlWindow {
public:
    SdlWindow(const char* title, int width, int height) {
        SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0"); // the picture is made by the processor
        checkSdl(SDL_Init(SDL_INIT_VIDEO) == 0);
        _window = SDL_CreateWindow(title, SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, width, height,
                                   SDL_WINDOW_RESIZABLE);
        if (_window == nullptr) {
            const std::runtime_error error(SDL_GetError());
            SDL_Quit();
            throw error;
        }
    }
    SdlWindow(const SdlWindow&) = delete;
    SdlWindow& operator=(const SdlWindow&) = delete;
    ~SdlWindow() { SDL_Quit(); } // with its windows

    /// Shows what `draw` draws on a cairo surface of the size of the window.
    template <class Drawing>
    void show(const Drawing& draw) const {
        SDL_Surface* const screen = SDL_GetWindowSurface(_window);
        if (screen == nullptr) {
            throw std::runtime_error(SDL_GetError());
        }
        const auto picture = Vell::CairoAdapter::makeImageSurface(screen->w, screen->h);
        draw(picture.get());
        const std::unique_ptr<SDL_Surface, decltype(&SDL_FreeSurface)> pixels(
            SDL_CreateRGBSurfaceWithFormatFrom(cairo_image_surface_get_data(picture.get()), screen->w,
                                               screen->h, 32, cairo_image_surface_get_stride(picture.get()),
                                               SDL_PIXELFORMAT_ARGB8888),
            SDL_FreeSurface);
        checkSdl(pixels != nullptr && SDL_BlitSurface(pixels.get(), nullptr, screen, nullptr) == 0);
        checkSdl(SDL_UpdateWindowSurface(_window) == 0);
    }

private:
    SDL_Window* _window = nullptr;
};
