#!/usr/bin/env bash
# Builds the fuzzers and lets each run for some seconds over the seeds and over what earlier runs found.
#
#   fuzz/run.sh                    every fuzzer, 20 seconds each
#   fuzz/run.sh 300 font text      these, 300 seconds each
#
# What a fuzzer learns stays in build/fuzz/grown; an input that fails is written to build/fuzz/failed.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-20}
fuzzers=("${@:2}")
[ ${#fuzzers[@]} -gt 0 ] || fuzzers=(font text cache sfnt)
declare -A longest=([font]=32768 [text]=600 [cache]=3000 [sfnt]=32768)
for fuzzer in "${fuzzers[@]}"; do
  [ -n "${longest[$fuzzer]:-}" ] || { echo "run.sh: there is no fuzzer '$fuzzer'" >&2; exit 2; }
done

cmake --preset fuzz
cmake --build --preset fuzz

export UBSAN_OPTIONS=print_stacktrace=1
run() {
  local options=(-max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -malloc_limit_mb=512
    -max_len="${longest[$1]}" -print_final_stats=1 -artifact_prefix="build/fuzz/failed/$1-")
  [ ! -f "fuzz/$1.dict" ] || options+=(-dict="fuzz/$1.dict")
  mkdir -p "build/fuzz/grown/$1" build/fuzz/failed
  "build/fuzz/fuzz/fuzz_$1" "${options[@]}" "build/fuzz/grown/$1" "build/fuzz/fuzz/corpus/$1"
}

failed=()
for fuzzer in "${fuzzers[@]}"; do
  log="build/fuzz/fuzz_$fuzzer.log"
  if ! run "$fuzzer" >"$log" 2>&1; then
    failed+=("$fuzzer")
    tail -n 60 "$log"
  fi
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  echo "fuzz_$fuzzer: ${executions:-unknown number of} executions"
done

if [ ${#failed[@]} -gt 0 ]; then
  echo "run.sh: failed: ${failed[*]}; their inputs are in build/fuzz/failed" >&2
  exit 1
fi
