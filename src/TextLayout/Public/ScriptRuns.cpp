#include <TextLayout/Public/ScriptRuns.h>

#include <TextLayout/Private/IcuErrors.h>
#include <TextLayout/Private/ScriptResolver.h>
#include <TextLayout/Private/Utf16Text.h>

#include <Utils/Public/Utf8.h>

namespace Vell::TextLayout {

namespace {

ScriptCode getScriptCode(UScriptCode script) {
    const char* const name = uscript_getShortName(script);
    return ScriptCode({name[0], name[1], name[2], name[3], '\0'});
}

} // namespace

std::vector<ScriptRun> findScriptRuns(std::string_view text) {
    checkLength(text);
    std::vector<ScriptRun> runs;
    ScriptResolver resolver;
    UScriptCode current = USCRIPT_COMMON;
    const char* const end = text.data() + text.size();
    for (const char* position = text.data(); position != end;) {
        const auto begin = static_cast<std::size_t>(position - text.data());
        const UScriptCode script = resolver.resolve(static_cast<UChar32>(decodeUtf8(position, end)));
        if (runs.empty() || (script != current && current != USCRIPT_COMMON)) {
            runs.push_back({begin, begin, getScriptCode(script)});
        } else if (script != current) {
            runs.back().script = getScriptCode(script); // what stands before the first script takes it
        }
        current = script;
        runs.back().end = static_cast<std::size_t>(position - text.data());
    }
    return runs;
}

} // namespace Vell::TextLayout
