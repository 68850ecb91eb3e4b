#!/usr/bin/env bash
# Installs missing packages, then builds and tests the repository in every supported way.
#
#   ./test.sh              runs all steps: format, dev, tidy, asan, tsan, fuzz, bench
#   ./test.sh dev asan     runs only these steps; docs, clang and clang_tests run only by name
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-packages

build() {
  cmake --preset "$1"
  cmake --build --preset "$1" "${@:2}"
}

step_format() { # sources follow .clang-format, and nothing is misspelled
  git ls-files -co --exclude-standard '*.h' '*.cpp' | xargs clang-format --dry-run --Werror
  scripts/check-spelling
}

step_dev() { # runs every test and compiles each public header by itself
  build dev --target all all_verify_interface_header_sets
  ctest --preset dev
}

step_docs() { # checks the documents and runs Doxygen, which must not warn; dev does this, too
  build dev --target docs_guide_tests docs_cairo_guide_tests docs_text_layout_tests hello cache_table examples/all
  ctest --preset dev -R '^(Docs|Guide|CairoGuide|ShapedText|Surprises)\.|(House|Road)IsDrawn' --no-tests=error
}

step_tidy() { # compiles the libraries, the tool and the examples with clang++ and clang-tidy
  build tidy
}

step_clang() { # compiles the same sources with clang++ without unity builds; runs only by name
  cmake --preset clang -DFONTENGINE_BUILD_TESTS=OFF
  cmake --build --preset clang
}

step_clang_tests() { # like step_clang, with the tests
  cmake --preset clang -DFONTENGINE_BUILD_TESTS=ON
  cmake --build --preset clang
}

step_asan() { # runs every test, built by clang++, under the address and undefined behaviour sanitizers
  build asan
  ctest --preset asan
}

step_tsan() { # runs every test that starts threads under the thread sanitizer
  build tsan
  ctest --preset tsan
}

step_fuzz() { # runs each fuzzer for twenty seconds, two at a time
  fuzz/run.sh 20 font text cache sfnt cairo shape vary
}

step_bench() { # runs each benchmark once, compares the pixels of floors with the engine's, and tests the reports
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
