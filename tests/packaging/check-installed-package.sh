#!/usr/bin/env bash
# Installs a build into a prefix of its own and builds a client against it, by the CMake package and by pkg-config.
#
#   check-installed-package.sh BUILD_DIR CXX_COMPILER
set -euo pipefail
build=$(realpath "$1")
compiler=$2
consumer=$(realpath "$(dirname "$0")/consumer")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cmake --install "$build" --prefix "$scratch/installed" >"$scratch/install.log"
# What is found must be found relative to the package itself.
mv "$scratch/installed" "$scratch/moved"
prefix=$scratch/moved

echo "== a client by find_package"
cmake -S "$consumer" -B "$scratch/client" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Werror"
cmake --build "$scratch/client"
"$scratch/client/consumer"

echo "== a client by pkg-config"
pc=$(find "$prefix" -name FontEngine.pc)
PKG_CONFIG_PATH=$(dirname "$pc")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046 # the flags are words of their own
"$compiler" -std=c++17 "$consumer/main.cpp" -o "$scratch/by-pkg-config" $(pkg-config --cflags --libs FontEngine)
LD_LIBRARY_PATH=$(pkg-config --variable=libdir FontEngine) "$scratch/by-pkg-config"

echo "== the installed tool"
if [ -e "$build/apps" ]; then
  "$prefix/bin/fontengine" render "Installed" -o "$scratch/tool.png"
  [ -s "$scratch/tool.png" ]
fi

echo "== the program of the README"
root=$(realpath "$(dirname "$0")/../..")
sed -n '/^```cpp$/,/^```$/p' "$root/README.md" | sed '/^```/d' >"$scratch/hello.cpp"
# shellcheck disable=SC2046
"$compiler" -std=c++17 -Wall -Wextra -Werror "$scratch/hello.cpp" -o "$scratch/hello" $(pkg-config --cflags --libs FontEngine)
(cd "$scratch" && LD_LIBRARY_PATH=$(pkg-config --variable=libdir FontEngine) ./hello)
[ -s "$scratch/hello.png" ]
