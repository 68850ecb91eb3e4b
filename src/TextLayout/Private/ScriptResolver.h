#pragma once

#include <unicode/uscript.h>

#include <array>
#include <cstddef>

namespace Vell::TextLayout {

/// Gives each code point of a text the script of its run, from the front to the back.
class ScriptResolver {
public:
    /// USCRIPT_COMMON until the first code point that has a script, never again behind it.
    UScriptCode resolve(UChar32 codePoint);

private:
    struct OpenBracket {
        UChar32 closing;
        UScriptCode script;
    };

    void take(UScriptCode script);
    void open(UChar32 closing);
    void close(UChar32 closing);

    /// The innermost brackets; when the room is full, the outermost one is forgotten.
    static constexpr std::size_t maxOpen = 64;
    std::array<OpenBracket, maxOpen> _open{};
    std::size_t _openCount = 0;
    UScriptCode _current = USCRIPT_COMMON;
};

} // namespace Vell::TextLayout
