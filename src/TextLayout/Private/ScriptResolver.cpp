#include <TextLayout/Private/ScriptResolver.h>

#include <TextLayout/Private/IcuErrors.h>
#include <TextLayout/Private/PairedBrackets.h>

#include <algorithm>

namespace Vell::TextLayout {

namespace {

UScriptCode getScript(UChar32 codePoint) {
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(codePoint, &status);
    throwIfFailed("uscript_getScript", status);
    return script;
}

} // namespace

UScriptCode ScriptResolver::resolve(UChar32 codePoint) {
    const UScriptCode script = getScript(codePoint);
    if (script != USCRIPT_COMMON && script != USCRIPT_INHERITED) {
        take(script);
        return _current;
    }
    const UBidiPairedBracketType type = getBracketType(codePoint);
    if (type == U_BPT_OPEN) {
        open(getClosingBracket(codePoint));
    } else if (type == U_BPT_CLOSE) {
        close(getCanonicalBracket(codePoint));
    }
    return _current;
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
