// A window that shows shaped, wrapped text as it is typed, and how the caches of the factory serve it. Type,
// press one of the keys in Keys.h, place the caret with the mouse, and drag to select. Needs SDL2.
//
//     live-text [TEXT]

#include "../SdlWindow.h"
#include "Keys.h"
#include "TextView.h"

#include <exception>
#include <iostream>

namespace {

/// Whether the event changes what the window shows.
bool handle(const SDL_Event& event, TextView& view) {
    if (event.type == SDL_TEXTINPUT) {
        view.getEditor().insert(event.text.text);
    } else if (event.type == SDL_KEYDOWN) {
        pressKey(event.key.keysym, view);
    } else if (event.type == SDL_MOUSEBUTTONDOWN) {
        const bool isSelecting = (SDL_GetModState() & KMOD_SHIFT) != 0;
        view.getEditor().moveTo(view.toParagraph(event.button.x, event.button.y), isSelecting);
    } else if (event.type == SDL_MOUSEMOTION && event.motion.state != 0) {
        view.getEditor().moveTo(view.toParagraph(event.motion.x, event.motion.y), true);
    } else {
        return event.type == SDL_WINDOWEVENT;
    }
    return true;
}

void run(const char* text) {
    const SdlWindow window("live-text", 800, 400);
    TextView view(text);
    SDL_Event event{};
    while (SDL_WaitEvent(&event) != 0 && event.type != SDL_QUIT) {
        if (handle(event, view)) {
            window.show([&](cairo_surface_t* surface) { view.draw(surface); });
        }
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
