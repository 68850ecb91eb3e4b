#pragma once

#include <TextLayout/Private/CharacterTraits.h>
#include <TextLayout/Private/ShapingBuffer.h>

#include <hb.h>

#include <cstdint>
#include <string_view>

/// Where HarfBuzz lets the glyphs of a word depend on what is around it, although no lookup of the font does.
namespace Vell::TextLayout {

inline bool isMark(char32_t character) {
    constexpr char32_t firstMark = 0x300;
    return character >= firstMark && getTraits(character).isMark();
}

/// Whether a run goes against the direction of its script, as numbers do in Arabic. HarfBuzz turns such a
/// run, so that marks without a base follow other characters, and before that looks for letters and digits in
/// all of it.
bool runsAgainstScript(const hb_segment_properties_t& properties);

/// Whether the letters of a script may be decomposed although the face has them.
bool mayBeDecomposed(hb_script_t script);

/// Whether such letters in a part stay decomposed. HarfBuzz composes them again if there is a mark anywhere
/// behind the first character.
bool staysDecomposed(std::string_view text, const TextPart& part);

/// Whether HarfBuzz divides the script into syllables. For some scripts, the answer is true without need.
bool hasSyllables(hb_script_t script);

/// Whether there may be more than a few ideographs and kana in runs of the script.
bool mayHaveIdeographs(hb_script_t script);

/// Whether a joiner without a base is at `offset`. In scripts with syllables, what becomes of it depends on
/// what follows, spaces included.
bool isJoinerAt(std::string_view text, std::uint32_t offset);

/// Whether letters of the script may join those beside them. For some scripts, the answer is true without
/// need.
bool mayJoin(hb_script_t script);

/// Whether letters at the ends of a word may join letters beyond its run, in a script whose letters may join.
/// Marks in between join, too.
bool joinsOutside(std::string_view text, const TextPart& run, const TextPart& word);

} // namespace Vell::TextLayout
