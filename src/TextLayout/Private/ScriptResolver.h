#pragma once

#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Public/ScriptRuns.h>

#include <unicode/uscript.h>

#include <array>
#include <cstddef>

namespace Vell::TextLayout {

ScriptCode getScriptCode(UScriptCode script);

/// Gives each code point of a text the script of its run, from the front to the back.
class ScriptResolver {
public:
    /// USCRIPT_COMMON until the first code point that has a script, never again behind it.
    UScriptCode resolve(char32_t codePoint, CharacterTraits traits) {
        if (!traits.takesScriptOfOthers()) {
            if (traits.getScript() != _current) {
                take(traits.getScript());
            }
        } else if (traits.isPairedBracket()) {
            followBracket(static_cast<UChar32>(codePoint));
        }
        return _current;
    }

private:
    struct OpenBracket {
        UChar32 closing;
        UScriptCode script;
    };

    void take(UScriptCode script);
    void followBracket(UChar32 codePoint);
    void open(UChar32 closing);
    void close(UChar32 closing);

    /// The innermost brackets; when the room is full, the outermost one is forgotten.
    static constexpr std::size_t maxOpen = 64;
    std::array<OpenBracket, maxOpen> _open; // NOLINT(cppcoreguidelines-pro-type-member-init): takes time
    std::size_t _openCount = 0;
    UScriptCode _current = USCRIPT_COMMON;
};

} // namespace Vell::TextLayout
