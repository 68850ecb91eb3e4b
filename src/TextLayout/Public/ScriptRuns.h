#pragma once

#include <Utils/Public/Export.h>

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// A script by its four letters in ISO 15924, such as "Latn", "Arab" and "Hira".
class ScriptCode {
public:
    explicit constexpr ScriptCode(const char (&letters)[5])
        : _letters{letters[0], letters[1], letters[2], letters[3]} {}

    friend bool operator==(const ScriptCode& lhs, const ScriptCode& rhs) {
        return lhs._letters == rhs._letters;
    }
    friend bool operator!=(const ScriptCode& lhs, const ScriptCode& rhs) { return !(lhs == rhs); }

    /// Lives as long as this object.
    std::string_view getLetters() const { return {_letters.data(), _letters.size()}; }

private:
    std::array<char, 4> _letters;
};

/// A part of a text whose characters share a script: the bytes from `begin` up to, but not including, `end`.
struct ScriptRun {
    std::size_t begin;
    std::size_t end;
    ScriptCode script;
};

/// Divides a text into the longest runs of one script (the property Script of UAX #24). The runs cover the
/// text, and two neighbours differ in their script.
///
/// Common and inherited characters, such as spaces, digits, punctuation and most marks, take the script of
/// the character before them; at the start, that of the first character that has one. A closing bracket takes
/// the script of its opening one, if fewer than 64 brackets were opened in between. A text without any script
/// is one run of "Zyyy". An ill-formed part of the UTF-8 counts as U+FFFD, a common character.
///
/// Cost: linear in the length of the text. Threads: any number of threads may call it.
/// Throws TextLayoutException if the text is too long, std::bad_alloc if memory is short.
VELL_API std::vector<ScriptRun> findScriptRuns(std::string_view text);

} // namespace Vell::TextLayout
