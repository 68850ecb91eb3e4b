#pragma once

#include <memory>
#include <vector>

namespace Vell::FontLoaders::Internal {

/// A whole font file in memory, shared by everyone who uses it; null where there is none.
using FontBytes = std::shared_ptr<const std::vector<unsigned char>>;

} // namespace Vell::FontLoaders::Internal
