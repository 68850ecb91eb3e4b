#include <TextLayout/Private/ScriptResolver.h>

#include <TextLayout/Private/PairedBrackets.h>

#include <algorithm>
#include <vector>

namespace Vell::TextLayout {

namespace {

std::vector<ScriptCode> listScriptCodes() {
    std::vector<ScriptCode> codes;
    for (int script = 0; script != USCRIPT_CODE_LIMIT; ++script) {
        const char* const name = uscript_getShortName(static_cast<UScriptCode>(script));
        codes.push_back(name != nullptr ? ScriptCode({name[0], name[1], name[2], name[3], '\0'})
                                        : ScriptCode("Zzzz"));
    }
    return codes;
}

} // namespace

ScriptCode getScriptCode(UScriptCode script) {
    static const std::vector<ScriptCode> codes = listScriptCodes();
    return codes[static_cast<std::size_t>(script)];
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
