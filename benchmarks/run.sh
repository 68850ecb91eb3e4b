#!/usr/bin/env bash
# Builds the benchmarks, runs all of them interleaved, and reports the time that each takes per item, how the engine
# compares, and which targets it meets. An item is a glyph, a face, a pixel, a hit or a run of a program.
#
#   benchmarks/run.sh                 runs everything, in about a quarter of an hour: leave the machine idle
#   benchmarks/run.sh 'layout/E/.*'   runs the benchmarks that match
#   benchmarks/run.sh --once          runs each for a moment, to see that it works: its figures mean nothing
#
# A process repeats each benchmark nine times, interleaved with the others, and the shortest repetition counts.
# Contestants are compared within each process, and the median of three processes decides. The report names the
# times that vary by more than a tenth, and asks for another run if a target depends on one of them.
#
# Results: build/bench/results-1.json to results-3.json, memory.json, and the plot results.svg. To update
# docs/performance.md:
#   benchmarks/report.py build/bench/results-?.json --memory build/bench/memory.json \
#     --into docs/performance.md --plot docs/performance.svg
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages
if [ "${1:-}" = --once ]; then
  name=once
  filter="-growth/10 MB" # which takes seconds
  processes=1
  effort=(--benchmark_min_time=0.000001)
  whole_repetitions=1
else
  scripts/install-packages bench || echo "run.sh: continuing without SDL_ttf, Qt or pango-view" >&2
  name=results
  filter="${1:-.}"
  processes=3
  effort=(--benchmark_repetitions=9 --benchmark_enable_random_interleaving=true --benchmark_min_time=0.05)
  whole_repetitions=41
fi

cmake --preset bench
cmake --build --preset bench
build=build/package
out=build/bench
mkdir -p "$out"

# Runs process number $1.
run_process() {
  if ! "$build/benchmarks/fontengine_benchmarks" --benchmark_filter="$filter" "${effort[@]}" \
    --benchmark_out="$out/$name-$1.json" --benchmark_out_format=json >"$out/$name-$1.log" 2>&1; then
    tail -20 "$out/$name-$1.log" >&2
    exit 1
  fi
  benchmarks/whole_process.py "$build/apps/fontengine/fontengine" "$out/$name-$1.json" --filter "$filter" \
    --repetitions "$whole_repetitions"
}

measured=()
for ((i = 1; i <= processes; ++i)); do
  run_process "$i"
  measured+=("$out/$name-$i.json")
done
# In the allocator's per-thread cache, free blocks would count as used.
GLIBC_TUNABLES=glibc.malloc.tcache_count=0 "$build/benchmarks/fontengine_memory" >"$out/memory.json"
benchmarks/report.py "${measured[@]}" --memory "$out/memory.json" --plot "$out/$name.svg"
