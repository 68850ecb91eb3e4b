#include <TextLayout/Private/DirectionalStack.h>

namespace Vell::TextLayout {

void DirectionalStack::follow(UCharDirection bidiClass) {
    switch (bidiClass) {
    case U_LEFT_TO_RIGHT_EMBEDDING:
    case U_RIGHT_TO_LEFT_EMBEDDING:
        return push(bidiClass == U_RIGHT_TO_LEFT_EMBEDDING, false, false);
    case U_LEFT_TO_RIGHT_OVERRIDE:
    case U_RIGHT_TO_LEFT_OVERRIDE:
        return push(bidiClass == U_RIGHT_TO_LEFT_OVERRIDE, true, false);
    case U_LEFT_TO_RIGHT_ISOLATE:
    case U_RIGHT_TO_LEFT_ISOLATE:
    case U_FIRST_STRONG_ISOLATE:
        return push(bidiClass == U_RIGHT_TO_LEFT_ISOLATE, false, true);
    case U_POP_DIRECTIONAL_FORMAT:
        return popEmbedding();
    case U_POP_DIRECTIONAL_ISOLATE:
        return popIsolate();
    case U_BLOCK_SEPARATOR:
        *this = DirectionalStack();
        return;
    default:
        return;
    }
}

void DirectionalStack::push(bool isRightToLeft, bool isOverride, bool isIsolate) {
    constexpr int maxLevel = 125;
    const int level = _entries.back().level;
    const bool changesParity = (level % 2 == 1) != isRightToLeft;
    const int next = level + (changesParity ? 1 : 2);
    if (next <= maxLevel && _overflowIsolates == 0 && _overflowEmbeddings == 0) {
        _entries.push_back({next, isOverride, isIsolate});
        _validIsolates += isIsolate ? 1 : 0;
    } else if (isIsolate) {
        ++_overflowIsolates;
    } else if (_overflowIsolates == 0) {
        ++_overflowEmbeddings;
    }
}

void DirectionalStack::popEmbedding() {
    if (_overflowIsolates > 0) {
        return;
    }
    if (_overflowEmbeddings > 0) {
        --_overflowEmbeddings;
    } else if (_entries.size() > 1 && !_entries.back().isIsolate) {
        _entries.pop_back();
    }
}

void DirectionalStack::popIsolate() {
    if (_overflowIsolates > 0) {
        --_overflowIsolates;
    } else if (_validIsolates > 0) {
        _overflowEmbeddings = 0;
        while (!_entries.back().isIsolate) {
            _entries.pop_back();
        }
        _entries.pop_back();
        --_validIsolates;
    }
}

} // namespace Vell::TextLayout
