#pragma once

#include "BenchEngine.h"

namespace Vell::Benchmarks {

/// The same font under another family name, for the families that the engine hints in its own way and that
/// nobody may hand on. Takes SFNT files; the new name is ASCII and no longer than the old one (throws
/// std::runtime_error).
std::shared_ptr<const Bytes> renameFamily(const Bytes& font, const std::string& family);

} // namespace Vell::Benchmarks
