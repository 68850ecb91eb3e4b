# Flags for every target of this build. They are never exported to clients.

add_library(fontengine_flags INTERFACE)

target_compile_features(fontengine_flags INTERFACE cxx_std_17)
# Results are exact to the bit: the compiler must not fuse a multiplication and an addition, which rounds only once.
target_compile_options(fontengine_flags INTERFACE
  -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>)
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ treats each source of a unity build as a header and warns about its anonymous namespaces.
  target_compile_options(fontengine_flags INTERFACE -Wno-subobject-linkage)
endif()
if(FONTENGINE_WARNINGS_AS_ERRORS)
  target_compile_options(fontengine_flags INTERFACE -Werror)
endif()

if(FONTENGINE_SANITIZER STREQUAL "address-undefined")
  # float-cast-overflow is not part of "undefined" by default.
  set(flags -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all -fno-omit-frame-pointer)
elseif(FONTENGINE_SANITIZER STREQUAL "fuzzer")
  # All code is instrumented, but only the fuzzers link libFuzzer's main function.
  set(flags -fsanitize=address,undefined,float-cast-overflow,fuzzer-no-link -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
elseif(FONTENGINE_SANITIZER STREQUAL "thread")
  set(flags -fsanitize=thread -fno-omit-frame-pointer)
elseif(FONTENGINE_SANITIZER STREQUAL "")
  set(flags)
else()
  message(FATAL_ERROR "FONTENGINE_SANITIZER is '${FONTENGINE_SANITIZER}'; it may be empty, address-undefined, fuzzer or thread")
endif()
if(FONTENGINE_COVERAGE)
  list(APPEND flags --coverage -fprofile-update=atomic) # correct counts with threads
endif()
target_compile_options(fontengine_flags INTERFACE ${flags})
target_link_options(fontengine_flags INTERFACE ${flags})
