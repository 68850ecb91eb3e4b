#!/usr/bin/env bash
# Proves the repository: installs what is missing, then builds and tests it in every way that matters.
#
#   ./test.sh              everything: format, dev, tidy, asan, tsan, fuzz, bench
#   ./test.sh dev asan     only these steps; there are docs, clang and clang_tests, too
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
  build dev --target docs_guide_tests docs_cairo_guide_tests hello cache_table examples/all
  ctest --preset dev -R '^(Docs|Guide|CairoGuide|Surprises)\.|(House|Road)IsDrawn' --no-tests=error
}

step_tidy() { # clang-tidy and the other compiler find nothing in the libraries, the tool and the examples
  build tidy
}

step_clang() { # the other compiler, each of these sources by itself; not part of everything, see tidy and asan
  cmake --preset clang -DFONTENGINE_BUILD_TESTS=OFF
  cmake --build --preset clang
}

step_clang_tests() { # the same with the tests
  cmake --preset clang -DFONTENGINE_BUILD_TESTS=ON
  cmake --build --preset clang
}

step_asan() { # every test by the other compiler, under the address and undefined behaviour sanitizers
  build asan
  ctest --preset asan
}

step_tsan() { # every test that starts threads, under the thread sanitizer
  build tsan
  ctest --preset tsan
}

step_fuzz() { # each fuzzer for twenty seconds, two at once
  fuzz/run.sh 20 font text cache sfnt cairo
}

step_bench() { # each benchmark once, only to see that it runs, that floors give the engine's pixels, and that reports work
  benchmarks/report_test.py
  benchmarks/run.sh --once
}

steps=("$@")
[ ${#steps[@]} -gt 0 ] || steps=(format dev tidy asan tsan fuzz bench)

for step in "${steps[@]}"; do
  declare -F "step_$step" >/dev/null || { echo "test.sh: unknown step '$step'" >&2; exit 2; }
done
times=()
for step in "${steps[@]}"; do
  echo "== $step"
  start=$SECONDS
  "step_$step"
  times+=("$((SECONDS - start))")
  echo "== $step passed in ${times[-1]} s"
done
echo "== all steps passed in $SECONDS s"
paste <(printf '%s\n' "${steps[@]}") <(printf '%5d s\n' "${times[@]}")
