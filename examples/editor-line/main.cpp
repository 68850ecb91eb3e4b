// A line of text that one edits in a window, in every script and in both directions. Type, and press
//
//     Left, Right, Home, End       to move the caret; with Ctrl by words; with Shift to select
//     Backspace, Delete            to take away a cluster or the selection; with Ctrl a word
//     Ctrl+A, Ctrl+C, Ctrl+X, Ctrl+V
//     Return                       to print the line and begin a new one
//     Escape                       to end
//
// The mouse places the caret, selects by dragging or with Shift, and selects a word by a double click. Needs
// SDL2.
//
//     editor-line [TEXT]

#include "../SdlWindow.h"
#include "Keys.h"
#include "LineView.h"

#include <FontEngine/FontEngine.h>

#include <exception>
#include <iostream>

namespace {

void press(const SDL_Keysym& key, TextEditor& editor) {
    if (key.sym == SDLK_RETURN) {
        std::cout << editor.getText() << std::endl;
        editor.selectAll();
        editor.insert("");
    } else {
        pressKey(key, editor);
    }
}

void click(const SDL_MouseButtonEvent& button, const LineView& view, TextEditor& editor) {
    editor.moveTo(view.toParagraph(button.x, button.y), (SDL_GetModState() & KMOD_SHIFT) != 0);
    if (button.clicks >= 2) {
        editor.selectWord();
    }
}

bool isEnd(const SDL_Event& event) {
    return event.type == SDL_QUIT || (event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_ESCAPE);
}

void handle(const SDL_Event& event, const LineView& view, TextEditor& editor) {
    if (event.type == SDL_TEXTINPUT) {
        editor.insert(event.text.text);
    } else if (event.type == SDL_KEYDOWN) {
        press(event.key.keysym, editor);
    } else if (event.type == SDL_MOUSEBUTTONDOWN && event.button.button == SDL_BUTTON_LEFT) {
        click(event.button, view, editor);
    } else if (event.type == SDL_MOUSEMOTION && (event.motion.state & SDL_BUTTON_LMASK) != 0) {
        editor.moveTo(view.toParagraph(event.motion.x, event.motion.y), true);
    }
}

void run(const char* text) {
    const SdlWindow window("editor-line", 800, 80);
    const auto factory = Vell::FontEngine::FontFactory::create("DejaVu Sans");
    TextEditor editor(factory, Vell::FontEngine::describeFont("DejaVu Sans", 28.0F), text);
    LineView view;
    SDL_Event event{};
    while (SDL_WaitEvent(&event) != 0 && !isEnd(event)) {
        handle(event, view, editor);
        window.show([&](cairo_surface_t* surface) { view.draw(surface, editor); });
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        run(argc > 1
                ? argv[1]
                : "Edit \u05D0\u05D5\u05EA\u05D9 12 \u0628\u0627\u0644\u0639\u0631\u0628\u064A\u0629 here");
    } catch (const std::exception& error) {
        std::cerr << "editor-line: " << error.what() << '\n';
        return 1;
    }
}
