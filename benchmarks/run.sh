#!/usr/bin/env bash
# Builds the benchmarks, runs all of them side by side and prints what each took, per item, and how the engine
# compares: an item is a glyph, a face or a pixel. Leave the machine alone meanwhile.
#
#   benchmarks/run.sh                 everything
#   benchmarks/run.sh 'layout/E/.*'   what matches
#
# The figures: build/bench/results.json
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages
cmake --preset bench
cmake --build --preset bench
build/bench/benchmarks/fontengine_benchmarks --benchmark_filter="${1:-.}" \
  --benchmark_repetitions=7 --benchmark_enable_random_interleaving=true --benchmark_min_time=0.1 \
  --benchmark_report_aggregates_only=true --benchmark_out=build/bench/results.json --benchmark_out_format=json \
  >build/bench/run.log
benchmarks/report.py build/bench/results.json
