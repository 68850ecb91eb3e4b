#pragma once

#include <memory>
#include <vector>

namespace Vell::FontLoaders {

/// A whole font file in memory, immutable and shared by everyone who uses it; null where there is none.
using FontBytes = std::shared_ptr<const std::vector<unsigned char>>;

} // namespace Vell::FontLoaders
