#pragma once

namespace Vell::Benchmarks {

/// Writes processor, compiler and the versions of the libraries into the outcome of the benchmarks, without
/// which its figures say little.
void describeMachine();

} // namespace Vell::Benchmarks
