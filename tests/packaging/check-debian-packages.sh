#!/usr/bin/env bash
# Makes the Debian packages and uses them. Setting up a Debian system takes minutes, so this script unpacks the packages
# into an empty folder, asks apt whether it can install their dependencies, and lets the loader resolve the libraries.
#
#   check-debian-packages.sh BUILD_DIR CXX_COMPILER      keeps BUILD_DIR for the next run
set -euo pipefail
build=$(realpath -m "$1")
compiler=$2
consumer=$(realpath "$(dirname "$0")/consumer")
source=$(realpath "$(dirname "$0")/../..")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
source "$(dirname "$0")/clients.sh"

fail() { echo "$1" >&2; exit 1; }

field() { dpkg-deb --field "$1" "$2"; }

expect_field() { # PACKAGE FIELD WORDS
  local found
  found=$(field "$1" "$2")
  grep -qF -- "$3" <<<"$found" || fail "$(basename "$1"): $2 lacks '$3': $found"
}

make_packages() {
  rm -f "$build"/*.deb
  cmake --preset package -S "$source" -B "$build" -DCMAKE_CXX_COMPILER="$compiler"
  cmake --build "$build"
  (cd "$build" && cpack)
  runtime=$(echo "$build"/libfontengine0_*.deb)
  development=$(echo "$build"/libfontengine-dev_*.deb)
  tools=$(echo "$build"/fontengine-tools_*.deb)
  text_layout=$(echo "$build"/libfontenginetextlayout0_*.deb)
}

check_control() {
  local version package
  version=$(field "$runtime" Version)
  for package in "$development" "$tools" "$text_layout"; do
    expect_field "$package" Depends "libfontengine0 (= $version)"
  done
  for package in "$development" "$tools"; do
    expect_field "$package" Depends "libfontenginetextlayout0 (= $version)"
  done
  for package in libfreetype-dev libboost-dev libcairo2-dev libfontconfig-dev libharfbuzz-dev libicu-dev; do
    expect_field "$development" Depends "$package"
  done
  for package in libfreetype6 libfontconfig1 libharfbuzz0b libharfbuzz-subset0 libcairo2 libc6 libstdc++6; do
    expect_field "$runtime" Depends "$package (>="
  done
  expect_field "$tools" Depends "libcairo2 (>="
  for package in libicu72 libharfbuzz0b libfontengine0; do
    expect_field "$text_layout" Depends "$package ("
  done
  field "$runtime" Depends | grep -qi 'libicu' && fail "the engine's package needs ICU"
  for package in "$runtime" "$development" "$tools" "$text_layout"; do
    expect_field "$package" Description "Licence: not chosen yet"
  done
  dpkg-deb --control "$runtime" "$scratch/control"
  [ "$(grep -c '^libFontEngine[A-Za-z]* 0 libfontengine0 (>= ' "$scratch/control/shlibs")" -eq 5 ] || fail "shlibs"
  dpkg-deb --control "$text_layout" "$scratch/text-layout-control"
  grep -q '^libFontEngineTextLayout 0 libfontenginetextlayout0 (>= ' "$scratch/text-layout-control/shlibs" ||
    fail "shlibs of the text layout"
  grep -qx 'activate-noawait ldconfig' "$scratch/control/triggers" || fail "no ldconfig trigger"
  [ ! -e "$scratch/control/postinst" ] && [ ! -e "$scratch/control/postrm" ] || fail "maintainer scripts"
}

check_dependencies() {
  apt-get install --simulate --no-install-recommends "$runtime" "$text_layout" "$development" "$tools" >"$scratch/apt.log" 2>&1 ||
    { cat "$scratch/apt.log" >&2; fail "apt cannot install the packages"; }
  grep "^Inst .*fontengine" "$scratch/apt.log"
}

check_files() {
  local libraries file dynamic
  libraries=$(find_libraries "$root/usr")
  for file in bin/fontengine share/man/man1/fontengine.1.gz share/bash-completion/completions/fontengine \
    share/fish/vendor_completions.d/fontengine.fish share/zsh/vendor-completions/_fontengine \
    share/doc/libfontengine0/copyright share/doc/libfontenginetextlayout0/copyright share/doc/libfontengine-dev/copyright share/doc/fontengine-tools/copyright \
    share/doc/fontengine/examples/string-to-png.cpp; do
    [ -s "$root/usr/$file" ] || fail "no $file"
  done
  grep -q 'Licence: not chosen yet' "$root"/usr/share/doc/*/copyright || fail "the copyright file is silent"
  for file in "$libraries"/libFontEngine*.so "$root/usr/bin/fontengine"; do
    [ -z "$(nm "$file" 2>/dev/null)" ] || fail "$file is not stripped"
    dynamic=$(readelf -d "$file")
    grep -qE 'R(UN)?PATH' <<<"$dynamic" && fail "$file searches libraries by itself"
    LD_LIBRARY_PATH=$libraries ldd "$file" >"$scratch/ldd"
    grep 'not found' "$scratch/ldd" && fail "$file does not find what it needs"
    grep 'libFontEngine' "$scratch/ldd" | grep -v "$root" && fail "$file finds other libraries than the packaged ones"
  done
  return 0
}

echo "== making the packages"
make_packages
echo "== dependencies, by apt's simulation"
check_control
check_dependencies
echo "== installed by unpacking with dpkg -x, without setting up a Debian system"
root=$scratch/root
for package in "$runtime" "$text_layout" "$development" "$tools"; do
  dpkg-deb --extract "$package" "$root"
done
check_files
echo "== the tool draws"
LD_LIBRARY_PATH=$(find_libraries "$root/usr") "$root/usr/bin/fontengine" render "Packaged" -o "$scratch/tool.png"
count_ink "$scratch/tool.png"
echo "== clients of the development package"
client_by_find_package "$root/usr"
client_by_pkg_config "$root/usr"
