#pragma once

#include "TextView.h"

#include <SDL_keycode.h>

#include <algorithm>
#include <string>

/// Takes away the last byte, and those before it until a whole UTF-8 character is gone.
inline void removeLastCharacter(std::string& text) {
    bool isInside = true;
    while (isInside && !text.empty()) {
        isInside = (static_cast<unsigned char>(text.back()) & 0xC0U) == 0x80U;
        text.pop_back();
    }
}

/// Changes the view as the key says: Up and Down zoom, Left and Right turn, Page Up and Page Down change the
/// device pixel ratio, Tab switches between bitmaps and outlines, Backspace takes the last character away.
inline void pressKey(SDL_Keycode key, TextView& view) {
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
    case SDLK_BACKSPACE:
        removeLastCharacter(view.text);
        break;
    default:
        break;
    }
}
