#pragma once

#include <string>

namespace Vell::Benchmarks {

/// Registers rows for a library that is not installed, so that no table silently lacks a contestant.
void registerAbsent(const std::string& contestant);
/// The rows of a library that shapes texts.
void registerAbsentShaper(const std::string& contestant);

} // namespace Vell::Benchmarks
