#!/usr/bin/env bash
# Builds the fuzzers and runs each for some seconds on the seeds and on the inputs that earlier runs found. On two
# processors or more, two fuzzers run at once.
#
#   fuzz/run.sh                        runs every fuzzer for 20 seconds
#   fuzz/run.sh 300 font text          runs these for 300 seconds each
#   fuzz/run.sh 300 font -- FOLDER...  also uses the fonts in these folders as seeds of the fuzzers font and sfnt
#
# A fuzzer continues after a finding. The inputs that it learns stay in build/fuzz/grown. Failing inputs go to
# build/fuzz/failed; the script lists them with their findings, and then fails. FUZZ_TIMEOUT is the time limit for one
# input in seconds. The default of 20 is too short if other work keeps the processors busy.
set -euo pipefail

seconds=20
fuzzers=()
folders=()
[ $# -eq 0 ] || [ "$1" = -- ] || { seconds=$1; shift; }
while [ $# -gt 0 ] && [ "$1" != -- ]; do fuzzers+=("$1"); shift; done
[ $# -eq 0 ] || shift
for folder in "$@"; do folders+=("$(realpath -e "$folder")"); done
cd "$(dirname "$0")/.."

[ ${#fuzzers[@]} -gt 0 ] || fuzzers=(font text cache sfnt cairo shape vary)
declare -A longest=([font]=150000 [text]=600 [cache]=3000 [sfnt]=150000 [cairo]=2000 [shape]=2000 [vary]=20000)
for fuzzer in "${fuzzers[@]}"; do
  [ -n "${longest[$fuzzer]:-}" ] || { echo "run.sh: there is no fuzzer '$fuzzer'" >&2; exit 2; }
done

cmake --preset fuzz
cmake --build --preset fuzz
further=build/fuzz/further
rm -rf "$further"
[ ${#folders[@]} -eq 0 ] || build/fuzz/fuzz/fontengine_fuzz_seeds "$further" "${folders[@]}"

export UBSAN_OPTIONS=print_stacktrace=1
run() {
  # The largest glyph in LCD mode is a block of 768 MiB. Energy is scaled by execution time: otherwise the few slow
  # inputs take nine tenths of it.
  local options=(-fork=1 -ignore_crashes=1 -ignore_timeouts=1 -ignore_ooms=1 -entropic_scale_per_exec_time=1
    -max_total_time="$seconds" -timeout="${FUZZ_TIMEOUT:-20}" -rss_limit_mb=4096 -malloc_limit_mb=1100
    -max_len="${longest[$1]}" -artifact_prefix="build/fuzz/failed/$1-" -print_funcs=0)
  local seeds=("build/fuzz/fuzz/corpus/$1")
  [ ! -d "$further/$1" ] || seeds+=("$further/$1")
  [ ! -f "fuzz/$1.dict" ] || options+=(-dict="fuzz/$1.dict")
  mkdir -p "build/fuzz/grown/$1" build/fuzz/failed
  "build/fuzz/fuzz/fuzz_$1" "${options[@]}" "build/fuzz/grown/$1" "${seeds[@]}"
}

# Inputs that are merely slow (slow-unit-...) are not failures.
list_failed() {
  find build/fuzz/failed -name "$1-*" ! -name "$1-slow-unit-*" -newer "$2" | sort
}

# Prints one line about what a single run of the input reports.
describe() {
  { timeout 120 build/fuzz/fuzz/fontengine_fuzz_replay "$1" "$2" 2>&1 || true; } |
    grep -m 1 -oE 'SUMMARY: .*|broken rule: .*|.*assertion failed: .*|.*FAILED.*' ||
    echo "no finding in a single run: the input takes too long or too much memory"
}

# Runs a fuzzer and reports its findings. Fails if there are any.
search() {
  local log="build/fuzz/fuzz_$1.log" start="build/fuzz/fuzz_$1.start" status=0
  touch "$start"
  run "$1" >"$log" 2>&1 || status=$?
  local inputs input
  inputs=$(list_failed "$1" "$start")
  [ "$status" -eq 0 ] || tail -n 60 "$log"
  for input in $inputs; do
    echo "$input: $(describe "$1" "$input")"
  done
  times >"build/fuzz/fuzz_$1.times" # the second line holds the user and system time of this function's children
  local executions processor
  executions=$(sed -n 's/^#\([0-9]*\): .*/\1/p' "$log" | tail -n 1)
  processor=$(awk -F '[ms ]+' 'NR == 2 { printf "%.0f", $1 * 60 + $2 + $3 * 60 + $4 }' "build/fuzz/fuzz_$1.times")
  echo "fuzz_$1: ${executions:-unknown number of} executions in $processor s of processor time"
  [ "$status" -eq 0 ] && [ -z "$inputs" ]
}

set -m # each search is a process group, so that it can be ended as a whole
declare -A searched=() # the fuzzer of each search that has not ended
failed=()
trap 'for group in "${!searched[@]}"; do kill -- "-$group" || true; done' EXIT

await_one() {
  local ended status=0
  wait -n -p ended "${!searched[@]}" || status=$?
  cat "build/fuzz/fuzz_${searched[$ended]}.report"
  [ "$status" -eq 0 ] || failed+=("${searched[$ended]}")
  unset "searched[$ended]"
}

at_once=$(($(nproc) < 2 ? 1 : 2))
for fuzzer in "${fuzzers[@]}"; do
  [ ${#searched[@]} -lt "$at_once" ] || await_one
  search "$fuzzer" >"build/fuzz/fuzz_$fuzzer.report" 2>&1 &
  searched[$!]=$fuzzer
done
while [ ${#searched[@]} -gt 0 ]; do await_one; done

if [ ${#failed[@]} -gt 0 ]; then
  echo "run.sh: failed: ${failed[*]}; their inputs are in build/fuzz/failed" >&2
  exit 1
fi
