#pragma once

#include "TextView.h"

#include <SDL.h>

#include <algorithm>

/// Changes the view as the key says: Up and Down zoom, Left and Right turn, Page Up and Page Down change the
/// device pixel ratio, Tab switches between bitmaps and outlines.
inline void pressViewKey(SDL_Keycode key, TextView& view) {
    switch (key) {
    case SDLK_UP:
        view.zoom = std::min(view.zoom * 1.25F, 16.0F);
        break;
    case SDLK_DOWN:
        view.zoom = std::max(view.zoom / 1.25F, 0.125F);
        break;
    case SDLK_RIGHT:
        view.degrees += 5.0F;
        break;
    case SDLK_LEFT:
        view.degrees -= 5.0F;
        break;
    case SDLK_PAGEUP:
        view.devicePixelRatio = std::min(view.devicePixelRatio + 0.5F, 4.0F);
        break;
    case SDLK_PAGEDOWN:
        view.devicePixelRatio = std::max(view.devicePixelRatio - 0.5F, 1.0F);
        break;
    case SDLK_TAB:
        view.isVector = !view.isVector;
        break;
    default:
        break;
    }
}

/// With Ctrl, the arrows move the caret.
inline void pressArrow(SDL_Keycode key, bool isSelecting, TextEditor& editor) {
    using Vell::TextLayout::TextMovement;
    switch (key) {
    case SDLK_LEFT:
        editor.move(TextMovement::Left, isSelecting);
        break;
    case SDLK_RIGHT:
        editor.move(TextMovement::Right, isSelecting);
        break;
    case SDLK_UP:
        editor.moveByLines(-1, isSelecting);
        break;
    case SDLK_DOWN:
        editor.moveByLines(1, isSelecting);
        break;
    default:
        break;
    }
}

/// Home and End move the caret, Backspace and Delete take away a cluster or the selection, Return begins a
/// line. Other keys do nothing.
inline void pressEditingKey(SDL_Keycode key, bool isSelecting, TextEditor& editor) {
    using Vell::TextLayout::TextMovement;
    switch (key) {
    case SDLK_HOME:
        editor.move(TextMovement::LineBegin, isSelecting);
        break;
    case SDLK_END:
        editor.move(TextMovement::LineEnd, isSelecting);
        break;
    case SDLK_BACKSPACE:
        editor.erase(TextMovement::PreviousCluster);
        break;
    case SDLK_DELETE:
        editor.erase(TextMovement::NextCluster);
        break;
    case SDLK_RETURN:
        editor.insert("\n");
        break;
    default:
        break;
    }
}

/// Shift selects.
inline void pressKey(const SDL_Keysym& key, TextView& view) {
    const bool isSelecting = (key.mod & KMOD_SHIFT) != 0;
    if ((key.mod & KMOD_CTRL) != 0) {
        pressArrow(key.sym, isSelecting, view.getEditor());
    } else {
        pressViewKey(key.sym, view);
        pressEditingKey(key.sym, isSelecting, view.getEditor());
    }
}
