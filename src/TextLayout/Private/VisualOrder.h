#pragma once

#include <TextLayout/Public/BidiLine.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// Rule L2 of UAX #9 over the runs of a line in logical order: fills `order` with their indices from left to
/// right. Levels must not be negative. Takes linear time at any depth.
void reorderVisually(const BidiLevel* levels, std::size_t count, std::vector<std::uint32_t>& order);

} // namespace Vell::TextLayout
