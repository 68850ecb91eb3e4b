#pragma once

#include <string>

namespace Vell::Benchmarks {

/// Rows for a library that this machine lacks, so that a table never silently has fewer contestants.
void registerAbsent(const std::string& contestant);

} // namespace Vell::Benchmarks
