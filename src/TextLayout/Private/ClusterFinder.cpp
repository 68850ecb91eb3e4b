#include <TextLayout/Private/ClusterFinder.h>

#include <TextLayout/Private/TextCharacters.h>
#include <TextLayout/Private/Utf16Text.h>

#include <utility>

namespace Vell::TextLayout {

namespace {

/// Beginning a window costs ICU about as much as dividing this many bytes.
constexpr std::size_t worthANewWindow = 24;

} // namespace

void ClusterFinder::addSpecial(std::size_t begin, std::size_t end, ClusterRole role) {
    if (role == ClusterRole::Complex) {
        if (_before != Before::Complex) {
            beginWindow();
        }
    } else if (role == ClusterRole::Extending) {
        if (_before == Before::Control) {
            startCluster(begin, Before::Base);
        }
    } else if (_before == Before::Complex) {
        endWindow(begin, end, role);
    } else {
        addControl(begin);
    }
}

void ClusterFinder::addControl(std::size_t begin) {
    const bool endsCrLf = begin > 0 && _text[begin] == '\n' && _text[begin - 1] == '\r';
    if (endsCrLf) {
        _base = begin;
        _before = Before::Control;
    } else {
        startCluster(begin, Before::Control);
    }
}

void ClusterFinder::beginWindow() {
    if (_hasWindow && _base >= _windowEnd + worthANewWindow) {
        divideWindow();
    }
    if (!_hasWindow) {
        _hasWindow = true;
        _windowBegin = _base;
    }
    _before = Before::Complex;
}

void ClusterFinder::endWindow(std::size_t base, std::size_t end, ClusterRole role) {
    _windowEnd = end;
    _base = base;
    _before = role == ClusterRole::Control ? Before::Control : Before::Base;
}

void ClusterFinder::divideWindow() {
    const std::string_view window = _text.substr(_windowBegin, _windowEnd - _windowBegin);
    toUtf16(window, _units);
    if (!_iterator) {
        _iterator.emplace(UBRK_CHARACTER);
    }
    _iterator->setText(_units);
    ByteCursor bytes(window);
    while (_iterator->next() && _iterator->getBoundary() < _units.size()) {
        _starts.insert(_windowBegin + bytes.moveTo(_iterator->getBoundary()));
    }
    _hasWindow = false;
}

void ClusterFinder::finish() {
    if (_before == Before::Complex) {
        _windowEnd = _text.size();
    }
    if (_hasWindow) {
        divideWindow();
    }
    _starts.insert(0);
    _starts.insert(_text.size());
}

ByteSet findClusterStarts(std::string_view text) {
    ByteSet starts;
    ClusterFinder clusters(text, starts);
    const char* const end = text.data() + text.size();
    for (const char* position = text.data(); position != end;) {
        const auto begin = static_cast<std::size_t>(position - text.data());
        const CharacterTraits traits = getTraits(decodeNext(position, end));
        clusters.add(begin, static_cast<std::size_t>(position - text.data()), traits);
    }
    clusters.finish();
    return starts;
}

} // namespace Vell::TextLayout
