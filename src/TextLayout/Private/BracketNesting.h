#pragma once

#include <string>

namespace Vell::TextLayout {

/// Replaces the paired brackets that rule BD16 of UAX #9 does not look at, those behind the place where more
/// than 63 brackets are open, by another neutral character. ICU has no such limit, and takes a time that
/// grows with the square of the number of brackets.
///
/// A paragraph counts as one isolating run sequence. In a paragraph with directional formatting characters,
/// in which each sequence counts by itself, the limit may be reached earlier than the rule has it.
void limitBracketNesting(std::u16string& units);

/// Replaces the paired brackets inside of directional overrides, which are none for UAX #9 (BD14), in the
/// same way.
void replaceOverriddenBrackets(std::u16string& units);

} // namespace Vell::TextLayout
