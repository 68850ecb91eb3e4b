# fontengine_fmt: the functions of fmt, compiled once. As a library of headers, fmt would be compiled into each source
# that formats a text, which takes seconds. Debian's shared library would be one more dependency of the packages.
#
# Static libraries use the headers, so that their clients may link a library of fmt. So do versions of fmt whose headers
# declare other functions.

if(NOT BUILD_SHARED_LIBS OR fmt_VERSION VERSION_LESS 9 OR fmt_VERSION VERSION_GREATER_EQUAL 10)
  add_library(fontengine_fmt INTERFACE)
  target_link_libraries(fontengine_fmt INTERFACE fmt::fmt-header-only)
  return()
endif()

add_library(fontengine_fmt OBJECT "${PROJECT_SOURCE_DIR}/cmake/fmt/Functions.cpp")
target_include_directories(fontengine_fmt SYSTEM PUBLIC
  $<TARGET_PROPERTY:fmt::fmt-header-only,INTERFACE_INCLUDE_DIRECTORIES>)
target_link_libraries(fontengine_fmt PRIVATE fontengine_flags)
set_target_properties(fontengine_fmt PROPERTIES
  CXX_CLANG_TIDY ""
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  POSITION_INDEPENDENT_CODE ON)
