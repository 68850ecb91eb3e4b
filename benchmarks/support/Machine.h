#pragma once

namespace Vell::Benchmarks {

/// Adds processor, compiler and versions of the libraries to the results, whose figures depend on them.
void describeMachine();

} // namespace Vell::Benchmarks
