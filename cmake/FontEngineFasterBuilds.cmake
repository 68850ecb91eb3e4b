# Uses ccache and mold if they are installed, unless `-DFONTENGINE_FASTER_BUILDS=OFF` is given or another compiler
# launcher is set. Release builds use the compiler's default linker.

include(CheckCXXSourceCompiles)

find_program(FONTENGINE_CCACHE ccache)
if(FONTENGINE_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${FONTENGINE_CCACHE}")
endif()
if("${CMAKE_CXX_COMPILER_LAUNCHER}" MATCHES "ccache$")
  # ccache caches precompiled headers only with this sloppiness. CCACHE_DEPEND spares the preprocessor's run of its own
  # that a source costs which is not cached yet.
  list(PREPEND CMAKE_CXX_COMPILER_LAUNCHER
    "${CMAKE_COMMAND}" -E env CCACHE_DEPEND=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(fontengine_flags INTERFACE -fpch-preprocess)
  else()
    target_compile_options(fontengine_flags INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
  endif()
endif()

if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  set(CMAKE_REQUIRED_LINK_OPTIONS -fuse-ld=mold)
  check_cxx_source_compiles("int main() {}" FONTENGINE_HAS_MOLD)
  unset(CMAKE_REQUIRED_LINK_OPTIONS)
  if(FONTENGINE_HAS_MOLD)
    target_link_options(fontengine_flags INTERFACE -fuse-ld=mold)
  endif()
endif()
