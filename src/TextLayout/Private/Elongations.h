#pragma once

#include <TextLayout/Public/ShapedText.h>

#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// A place between two joined letters where a line may be elongated.
struct Elongation {
    std::uint32_t offset; ///< where the second one begins
    std::uint8_t rank;    ///< 0 is the best
};

/// The best place of each word of Arabic, in logical order, by the rules of typesetters: beside an elongation
/// that the author wrote, behind seen and sad, in front of certain letters at the end of the word, or else at
/// its last joint. `runs` are the indices of the runs in logical order. Takes linear time.
std::vector<Elongation> findElongations(const ShapedText& text, const std::vector<std::uint32_t>& runs);

} // namespace Vell::TextLayout
