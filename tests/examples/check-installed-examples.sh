#!/usr/bin/env bash
# Installs a build into a prefix of its own, then builds some of the installed examples against it and runs them.
#
#   check-installed-examples.sh BUILD_DIR CXX_COMPILER
set -euo pipefail
build=$(realpath "$1")
compiler=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cmake --install "$build" --prefix "$scratch/prefix" >"$scratch/install.log"
cmake -S "$scratch/prefix/share/doc/fontengine/examples" -B "$scratch/built" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$scratch/prefix" \
  -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Werror"
cmake --build "$scratch/built" --target example-string-to-png example-texture-atlas
(cd "$scratch" && built/string-to-png && built/texture-atlas)
[ -s "$scratch/string-to-png.png" ] && [ -s "$scratch/texture-atlas.png" ]
if [ -e "$scratch/prefix/include/TextLayout" ]; then
  cmake --build "$scratch/built" --target example-mixed-scripts
  (cd "$scratch" && built/mixed-scripts)
  [ -s "$scratch/mixed-scripts.png" ] && [ -s "$scratch/mixed-scripts.pdf" ]
fi
