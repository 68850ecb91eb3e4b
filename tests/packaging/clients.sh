# Functions that build and run the client against a prefix. The sourcing script must set compiler, consumer (a folder)
# and scratch (a folder).

client_by_find_package() { # PREFIX
  rm -rf "$scratch/client"
  cmake -S "$consumer" -B "$scratch/client" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_PREFIX_PATH="$1" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Werror"
  cmake --build "$scratch/client"
  expect_inside "$1" "$scratch/client/CMakeCache.txt"
  LD_LIBRARY_PATH=$(find_libraries "$1") "$scratch/client/consumer"
  LD_LIBRARY_PATH=$(find_libraries "$1") "$scratch/client/consumer-without-rtti"
  expect_no_text_layout "$1" "$scratch/client/consumer"
  if has_text_layout "$1"; then
    LD_LIBRARY_PATH=$(find_libraries "$1") "$scratch/client/consumer-of-text-layout"
  fi
}

has_text_layout() { # PREFIX
  [ -e "$1/include/fontengine/TextLayout/TextLayout.h" ]
}

expect_no_text_layout() { # PREFIX PROGRAM: who only draws loads neither the text layout nor ICU
  LD_LIBRARY_PATH=$(find_libraries "$1") ldd "$2" >"$scratch/loaded"
  if grep -E 'libFontEngineTextLayout|libicu' "$scratch/loaded"; then
    echo "$2 loads the libraries above" >&2
    return 1
  fi
}

expect_inside() { # PREFIX CACHE: fails if CMake found the package elsewhere
  grep "^FontEngine_DIR:PATH=$1/" "$2"
}

find_libraries() { # PREFIX
  local pc
  pc=$(find "$1" -name FontEngine.pc)
  dirname "$(dirname "$pc")"
}

compile_by_pkg_config() { # PREFIX SOURCE OUTPUT [PACKAGE]: knows of FontEngine only what pkg-config prints
  local flags
  flags=$(PKG_CONFIG_PATH=$(find_libraries "$1")/pkgconfig pkg-config --cflags --libs "${4:-FontEngine}")
  # shellcheck disable=SC2086 # the flags must split into words
  "$compiler" -std=c++17 -Wall -Wextra -Werror "$2" -o "$3" $flags
}

client_by_pkg_config() { # PREFIX
  compile_by_pkg_config "$1" "$consumer/main.cpp" "$scratch/by-pkg-config"
  LD_LIBRARY_PATH=$(find_libraries "$1") "$scratch/by-pkg-config"
  expect_no_text_layout "$1" "$scratch/by-pkg-config"
  if has_text_layout "$1"; then
    compile_by_pkg_config "$1" "$consumer/text-layout.cpp" "$scratch/text-layout-by-pkg-config" FontEngineTextLayout
    LD_LIBRARY_PATH=$(find_libraries "$1") "$scratch/text-layout-by-pkg-config"
  fi
}

expect_linkage() { # shared|static PROGRAM
  local dynamic
  dynamic=$(readelf -d "$2")
  if grep -q 'NEEDED.*libFontEngine' <<<"$dynamic"; then
    [ "$1" = shared ]
  else
    [ "$1" = static ]
  fi || { echo "$2 is not linked $1" >&2; return 1; }
}

count_ink() { # PNG: fails if no pixel is dark
  "$compiler" -std=c++17 "$(dirname "$consumer")/ink.cpp" -o "$scratch/ink" $(pkg-config --cflags --libs cairo)
  "$scratch/ink" "$1"
}
