#include <TextLayout/Public/ScriptRuns.h>

#include <TextLayout/Private/ScriptResolver.h>
#include <TextLayout/Private/Utf16Text.h>

#include <Utils/Public/Utf8.h>

namespace Vell::TextLayout {

std::vector<ScriptRun> findScriptRuns(std::string_view text) {
    checkLength(text);
    std::vector<ScriptRun> runs;
    ScriptResolver resolver;
    UScriptCode current = USCRIPT_COMMON;
    const char* const end = text.data() + text.size();
    for (const char* position = text.data(); position != end;) {
        const auto begin = static_cast<std::size_t>(position - text.data());
        const char32_t codePoint = decodeUtf8(position, end);
        const UScriptCode script = resolver.resolve(codePoint, getTraits(codePoint));
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
