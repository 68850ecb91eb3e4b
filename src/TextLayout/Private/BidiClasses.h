#pragma once

#include <unicode/uchar.h>

#include <cstdint>

/// Sets of the bidi classes of UAX #9, as sums of U_MASK.
namespace Vell::TextLayout::BidiClasses {

constexpr std::uint32_t strongRight = U_MASK(U_RIGHT_TO_LEFT) | U_MASK(U_RIGHT_TO_LEFT_ARABIC);

constexpr std::uint32_t isolateInitiators =
    U_MASK(U_LEFT_TO_RIGHT_ISOLATE) | U_MASK(U_RIGHT_TO_LEFT_ISOLATE) | U_MASK(U_FIRST_STRONG_ISOLATE);

constexpr std::uint32_t embeddings = U_MASK(U_LEFT_TO_RIGHT_EMBEDDING) | U_MASK(U_RIGHT_TO_LEFT_EMBEDDING) |
                                     U_MASK(U_LEFT_TO_RIGHT_OVERRIDE) | U_MASK(U_RIGHT_TO_LEFT_OVERRIDE);

/// What may change the levels of a paragraph whatever its direction.
constexpr std::uint32_t raisingEverywhere = U_MASK(U_ARABIC_NUMBER) | embeddings | isolateInitiators;

/// What may change the levels of a paragraph that runs from left to right, or from right to left.
constexpr std::uint32_t raisingInLeftToRight = raisingEverywhere | strongRight;
constexpr std::uint32_t raisingInRightToLeft =
    raisingEverywhere | U_MASK(U_LEFT_TO_RIGHT) | U_MASK(U_EUROPEAN_NUMBER);

/// What rule X9 removes from the line.
constexpr std::uint32_t removed = embeddings | U_MASK(U_POP_DIRECTIONAL_FORMAT) | U_MASK(U_BOUNDARY_NEUTRAL);

/// What rule L1 resets in front of the end of a line.
constexpr std::uint32_t spaceAtLineEnd = removed | isolateInitiators | U_MASK(U_POP_DIRECTIONAL_ISOLATE) |
                                         U_MASK(U_WHITE_SPACE_NEUTRAL) | U_MASK(U_SEGMENT_SEPARATOR) |
                                         U_MASK(U_BLOCK_SEPARATOR);

} // namespace Vell::TextLayout::BidiClasses
