#!/usr/bin/env bash
# Proves the repository: installs what is missing, then builds and tests it in every way that matters.
#
#   ./test.sh              everything
#   ./test.sh dev asan     only these steps: format, dev, docs, clang, clang_tests, asan, tsan,
#                          fuzz, bench
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-packages

build() {
  cmake --preset "$1"
  cmake --build --preset "$1" "${@:2}"
}

step_format() { # sources are formatted as .clang-format says
  git ls-files -co --exclude-standard '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
}

step_dev() { # every test, and each public header by itself
  build dev --target all all_verify_interface_header_sets
  ctest --preset dev
}

step_docs() { # the documents are right and Doxygen warns about nothing; dev does so, too
  build dev --target guide_tests cairo_guide_tests hello cache_table
  ctest --preset dev -R '^(Docs|Guide|CairoGuide|Surprises)\.|HouseIsDrawn' --no-tests=error
  scripts/build-docs
}

step_clang() { # the other compiler finds nothing to warn about in what is installed
  cmake --preset clang -DFONTENGINE_BUILD_TESTS=OFF
  cmake --build --preset clang
}

step_clang_tests() { # nor in the tests; not part of everything, because it takes as long as all of g++'s build
  cmake --preset clang -DFONTENGINE_BUILD_TESTS=ON
  cmake --build --preset clang
}

step_asan() { # every test under the address and undefined behaviour sanitizers
  build asan
  ctest --preset asan
}

step_tsan() { # every test under the thread sanitizer
  build tsan
  ctest --preset tsan
}

step_fuzz() { # each fuzzer for twenty seconds
  fuzz/run.sh 20
}

step_bench() { # each benchmark once, only to see that it runs, that floors give the engine's pixels, and that reports work
  benchmarks/report_test.py
  benchmarks/run.sh --once
}

steps=("$@")
[ ${#steps[@]} -gt 0 ] || steps=(format dev clang asan tsan fuzz bench)

for step in "${steps[@]}"; do
  declare -F "step_$step" >/dev/null || { echo "test.sh: unknown step '$step'" >&2; exit 2; }
done
for step in "${steps[@]}"; do
  echo "== $step"
  start=$SECONDS
  "step_$step"
  echo "== $step passed in $((SECONDS - start)) s"
done
