#pragma once

#include "../TextEditor.h"

#include <SDL.h>

#include <memory>
#include <string>

/// A line has no line ends: pasted ones become spaces.
inline std::string readClipboard() {
    const std::unique_ptr<char, decltype(&SDL_free)> clipboard(SDL_GetClipboardText(), SDL_free);
    std::string text = clipboard ? clipboard.get() : "";
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// Ctrl with A, C, X or V.
inline void pressShortcut(SDL_Keycode key, TextEditor& editor) {
    if (key == SDLK_a) {
        editor.selectAll();
    } else if (key == SDLK_v) {
        editor.insert(readClipboard());
    } else if ((key == SDLK_c || key == SDLK_x) && !editor.getSelectedText().empty()) {
        SDL_SetClipboardText(editor.getSelectedText().c_str());
        if (key == SDLK_x) {
            editor.insert("");
        }
    }
}

/// Left and Right go where they point, whatever the direction of the text. With Ctrl, they go by words, on or
/// back in the order of reading.
inline Vell::TextLayout::TextMovement chooseArrowMovement(bool isLeft, bool isByWord,
                                                          const TextEditor& editor) {
    using Vell::TextLayout::TextMovement;
    if (!isByWord) {
        return isLeft ? TextMovement::Left : TextMovement::Right;
    }
    const bool isBack = isLeft != editor.getParagraph().getLines().front().isRightToLeft;
    return isBack ? TextMovement::PreviousWord : TextMovement::NextWord;
}

/// Changes the line as the key says.
inline void pressKey(const SDL_Keysym& key, TextEditor& editor) {
    using Vell::TextLayout::TextMovement;
    const bool isShift = (key.mod & KMOD_SHIFT) != 0;
    const bool isControl = (key.mod & KMOD_CTRL) != 0;
    switch (key.sym) {
    case SDLK_LEFT:
    case SDLK_RIGHT:
        editor.move(chooseArrowMovement(key.sym == SDLK_LEFT, isControl, editor), isShift);
        break;
    case SDLK_HOME:
        editor.move(TextMovement::LineBegin, isShift);
        break;
    case SDLK_END:
        editor.move(TextMovement::LineEnd, isShift);
        break;
    case SDLK_BACKSPACE:
        editor.erase(isControl ? TextMovement::PreviousWord : TextMovement::PreviousCluster);
        break;
    case SDLK_DELETE:
        editor.erase(isControl ? TextMovement::NextWord : TextMovement::NextCluster);
        break;
    default:
        if (isControl) {
            pressShortcut(key.sym, editor);
        }
        break;
    }
}
