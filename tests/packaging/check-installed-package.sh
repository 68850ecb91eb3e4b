#!/usr/bin/env bash
# Installs a build into a prefix of its own and builds clients against it with the CMake package and with pkg-config.
#
#   check-installed-package.sh BUILD_DIR CXX_COMPILER
set -euo pipefail
build=$(realpath "$1")
compiler=$2
consumer=$(realpath "$(dirname "$0")/consumer")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
source "$(dirname "$0")/clients.sh"

cmake --install "$build" --prefix "$scratch/installed" >"$scratch/install.log"
# The package must not depend on the prefix that it was installed to.
mv "$scratch/installed" "$scratch/moved"
prefix=$scratch/moved

echo "== a client by find_package"
client_by_find_package "$prefix"
expect_linkage shared "$scratch/client/consumer"

echo "== a client by pkg-config"
client_by_pkg_config "$prefix"
expect_linkage shared "$scratch/by-pkg-config"

echo "== the installed tool"
if [ -e "$build/apps" ]; then
  "$prefix/bin/fontengine" render "Installed" -o "$scratch/tool.png"
  count_ink "$scratch/tool.png"
fi

echo "== the program of the README"
root=$(realpath "$(dirname "$0")/../..")
sed -n '/^```cpp$/,/^```$/p' "$root/README.md" | sed '/^```/d' >"$scratch/hello.cpp"
compile_by_pkg_config "$prefix" "$scratch/hello.cpp" "$scratch/hello"
(cd "$scratch" && LD_LIBRARY_PATH=$(find_libraries "$prefix") ./hello)
count_ink "$scratch/hello.png"
