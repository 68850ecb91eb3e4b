# fontengine_fmt: fmt for the project's own use. Builds for development link its library. All others compile what they
# use of it into each source, which takes seconds, so that packages and static libraries depend on nothing more.

add_library(fontengine_fmt INTERFACE)
if(PROJECT_IS_TOP_LEVEL AND (FONTENGINE_SANITIZER OR (BUILD_SHARED_LIBS AND CMAKE_BUILD_TYPE STREQUAL "Debug")))
  target_link_libraries(fontengine_fmt INTERFACE fmt::fmt)
else()
  target_link_libraries(fontengine_fmt INTERFACE fmt::fmt-header-only)
endif()
