#!/usr/bin/env bash
# Builds a client that adds FontEngine as a subdirectory, then installs the static libraries for other clients.
# Builds without optimisation and in unity builds, because only finding and linking matter here.
#
#   check-superproject.sh shared|static CXX_COMPILER
set -euo pipefail
kind=$1
compiler=$2
consumer=$(realpath "$(dirname "$0")/consumer")
root=$(realpath "$(dirname "$0")/../..")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
source "$(dirname "$0")/clients.sh"

echo "== a client by add_subdirectory, $kind"
[ "$kind" = shared ] && is_shared=ON || is_shared=OFF
# The shared libraries do without what only variable fonts need; the static ones have everything.
[ "$kind" = shared ] && has_variable_fonts=OFF || has_variable_fonts=ON
cmake -S "$consumer" -B "$scratch/super" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS=-O0 -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=24 \
  -DBUILD_SHARED_LIBS=$is_shared -DFONTENGINE_BUILD_VARIABLE_FONTS=$has_variable_fonts -DCONSUMER_SUBDIRECTORY="$root"
cmake --build "$scratch/super" -j2
"$scratch/super/consumer"
"$scratch/super/consumer-without-rtti"
"$scratch/super/consumer-of-text-layout"
expect_linkage "$kind" "$scratch/super/consumer"
[ ! -e "$scratch/super/FontEngine/tests" ] && [ ! -e "$scratch/super/FontEngine/apps" ]

if [ "$kind" = shared ]; then
  ldd "$scratch/super/consumer" >"$scratch/loaded"
  if grep harfbuzz-subset "$scratch/loaded"; then
    echo "the build without variable fonts loads the library above" >&2
    exit 1
  fi
fi

if [ "$kind" = static ]; then
  cmake --install "$scratch/super" --prefix "$scratch/installed" >"$scratch/install.log"
  mv "$scratch/installed" "$scratch/moved"

  echo "== a client by find_package, static"
  client_by_find_package "$scratch/moved"
  expect_linkage static "$scratch/client/consumer"

  echo "== a client by pkg-config, static"
  client_by_pkg_config "$scratch/moved"
  expect_linkage static "$scratch/by-pkg-config"
fi
