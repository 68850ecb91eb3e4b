#!/usr/bin/env bash
# Tests scripts/compare-abi with tiny libraries, then with a tiny repository without and with a tag.
#
#   check-abi-comparison.sh COMPARE_ABI CXX_COMPILER
set -euo pipefail
compare=$(realpath "$1")
compiler=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

expect() { # STATUS PATTERN COMMAND...
  local status=0
  "${@:3}" >output 2>&1 || status=$?
  if [ $status -ne "$1" ] || ! grep -q -- "$2" output; then
    echo "expected status $1 and '$2', got status $status and:" >&2
    cat output >&2
    exit 1
  fi
}

make_library() { # FOLDER SOURCE [SOVERSION]
  mkdir "$1"
  "$compiler" -g -shared -fPIC -Wl,-soname,libtiny.so."${3:-0}" -x c++ - -o "$1/libtiny.so.${3:-0}.1" <<<"$2"
}

make_library first 'struct Pen { int x; }; int draw(Pen& pen) { return pen.x; }'
make_library more 'struct Pen { int x; }; int draw(Pen& pen) { return pen.x; } int erase() { return 0; }'
make_library wider 'struct Pen { long y; int x; }; int draw(Pen& pen) { return pen.x; }'
make_library less 'struct Pen { int x; }; int paint(Pen& pen) { return pen.x; }'
make_library next 'int paint() { return 0; }' 1
mkdir none

echo "== two folders"
expect 0 'libtiny.so.0 keeps its ABI' "$compare" first more
expect 1 "type size changed from 32 to 128" "$compare" first wider
expect 1 'libtiny.so.0 breaks its ABI' "$compare" first wider
expect 1 "'function int draw(Pen&)'" "$compare" first less
expect 0 'libtiny.so.0 is gone' "$compare" first next
expect 1 'no library in none' "$compare" none first
expect 2 'usage' "$compare" first

echo "== a repository"
mkdir -p repository/scripts
cd repository
cp "$compare" scripts/compare-abi
cat >CMakeLists.txt <<'EOF'
cmake_minimum_required(VERSION 3.25)
project(Tiny LANGUAGES CXX)
add_library(tiny tiny.cpp)
set_target_properties(tiny PROPERTIES VERSION 0.1 SOVERSION 0)
EOF
echo 'int draw(int x) { return x; }' >tiny.cpp
git init -q
git config user.name tester
git config user.email tester@localhost.invalid
git add .
git commit -qm 'first'
expect 0 'no tag yet' scripts/compare-abi
git tag v0.1
expect 0 'libtiny.so.0 keeps its ABI' scripts/compare-abi
echo 'int draw(long x) { return static_cast<int>(x); }' >tiny.cpp
expect 1 'libtiny.so.0 breaks its ABI' scripts/compare-abi
