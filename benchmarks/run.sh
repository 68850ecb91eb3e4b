#!/usr/bin/env bash
# Builds the benchmarks, runs all of them side by side and prints what each took, per item, how the engine
# compares, and which targets it meets. An item is a glyph, a face, a pixel, a hit or a run of a program.
#
#   benchmarks/run.sh                 everything, in about a quarter of an hour: leave the machine alone
#   benchmarks/run.sh 'layout/E/.*'   what matches
#   benchmarks/run.sh --once          each for a moment, only to see that it runs: its figures mean nothing
#
# A process repeats each benchmark nine times, all of them interleaved, and its shortest repetition counts. What
# is compared is compared process by process; of three processes the median decides. Where times varied by more
# than a tenth, the report names them, and asks for another run if a target rests on one of them.
#
# The figures: build/bench/results-1.json to results-3.json and memory.json; as a picture: results.svg. Those of
# docs/performance.md:
#   benchmarks/report.py build/bench/results-?.json --memory build/bench/memory.json \
#     --into docs/performance.md --plot docs/performance.svg
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages
if [ "${1:-}" = --once ]; then
  name=once
  filter="-growth/10 MB" # takes seconds
  processes=1
  effort=(--benchmark_min_time=0.000001)
  whole_repetitions=1
else
  scripts/install-packages bench || echo "run.sh: going on without SDL_ttf, Qt or pango-view" >&2
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
# The allocator's cache for each thread would hide what is free.
GLIBC_TUNABLES=glibc.malloc.tcache_count=0 "$build/benchmarks/fontengine_memory" >"$out/memory.json"
benchmarks/report.py "${measured[@]}" --memory "$out/memory.json" --plot "$out/$name.svg"
