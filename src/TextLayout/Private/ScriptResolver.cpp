#include <TextLayout/Private/ScriptResolver.h>

#include <TextLayout/Private/PairedBrackets.h>

#include <algorithm>

namespace Vell::TextLayout {

ScriptCode getScriptCode(UScriptCode script) {
    const char* const name = uscript_getShortName(script);
    return ScriptCode({name[0], name[1], name[2], name[3], '\0'});
}

void ScriptResolver::followBracket(UChar32 codePoint) {
    if (getBracketType(codePoint) == U_BPT_OPEN) {
        open(getClosingBracket(codePoint));
    } else {
        close(getCanonicalBracket(codePoint));
    }
}

void ScriptResolver::take(UScriptCode script) {
    if (_current == USCRIPT_COMMON) { // the brackets before the first script take it, too
        for (std::size_t i = 0; i < _openCount; ++i) {
            _open[i].script = script;
        }
    }
    _current = script;
}

void ScriptResolver::open(UChar32 closing) {
    if (_openCount == maxOpen) {
        std::move(_open.begin() + 1, _open.end(), _open.begin());
        --_openCount;
    }
    _open[_openCount++] = {closing, _current};
}

void ScriptResolver::close(UChar32 closing) {
    for (std::size_t i = _openCount; i-- > 0;) {
        if (_open[i].closing == closing) {
            _current = _open[i].script;
            _openCount = i;
            return;
        }
    }
}

} // namespace Vell::TextLayout
