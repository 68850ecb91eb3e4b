#!/usr/bin/env bash
# Builds the benchmarks, runs all of them side by side and prints what each took, per item, how the engine
# compares, and which targets it meets. An item is a glyph, a face, a pixel or a hit. Takes some minutes: leave
# the machine alone meanwhile.
#
#   benchmarks/run.sh                 everything
#   benchmarks/run.sh 'layout/E/.*'   what matches
#   benchmarks/run.sh --once          each for a moment, only to see that it runs: its figures mean nothing
#
# The figures: build/bench/results.json and memory.json; as a picture: results.svg. Those of docs/performance.md:
#   benchmarks/report.py build/bench/results.json build/bench/memory.json \
#     --into docs/performance.md --plot docs/performance.svg
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages
if [ "${1:-}" = --once ]; then
  name=once
  filter="-growth/10 MB" # two gigabytes for one text
  effort=(--benchmark_min_time=0.000001)
else
  scripts/install-packages bench || echo "run.sh: going on without SDL_ttf or Qt" >&2
  name=results
  filter="${1:-.}"
  effort=(--benchmark_repetitions=7 --benchmark_enable_random_interleaving=true --benchmark_min_time=0.08)
fi

cmake --preset bench
cmake --build --preset bench
build=build/package
out=build/bench
mkdir -p "$out"
if ! "$build/benchmarks/fontengine_benchmarks" --benchmark_filter="$filter" "${effort[@]}" \
  --benchmark_out="$out/$name.json" --benchmark_out_format=json >"$out/$name.log" 2>&1; then
  tail -20 "$out/$name.log" >&2
  exit 1
fi
# The allocator's cache for each thread would hide what is free.
GLIBC_TUNABLES=glibc.malloc.tcache_count=0 "$build/benchmarks/fontengine_memory" >"$out/memory.json"
benchmarks/report.py "$out/$name.json" "$out/memory.json" --plot "$out/$name.svg"
