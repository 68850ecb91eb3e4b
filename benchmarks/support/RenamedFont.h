#pragma once

#include "BenchEngine.h"

namespace Vell::Benchmarks {

/// Returns the font under another family name. It stands in for fonts whose families the engine hints in its
/// own way, but whose files may not be redistributed. Takes SFNT files. The new name is ASCII; throws
/// std::runtime_error if it is longer than the old one.
FontLoaders::FontBytes renameFamily(const Bytes& font, const std::string& family);

} // namespace Vell::Benchmarks
