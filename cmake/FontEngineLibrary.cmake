# fontengine_add_library(<target> EXPORT_NAME <name> [RUNTIME_COMPONENT <component>] SOURCES <file>...
#   HEADERS <public header>...)
#
# Adds a library with the alias FontEngine::<name>, hidden visibility, exports limited to Vell:: and a versioned soname.
# Its headers are installed below include/fontengine, under the path that clients include them by. Programs need the
# component Runtime, or the given one; compiling against the library also needs Development.
include(CheckIPOSupported)
check_ipo_supported(RESULT isIpoSupported LANGUAGES CXX)

# A glyph passes through functions of several files, so link-time optimisation lets shared libraries inline across them.
# Static libraries remain plain object code, which every linker understands. Instrumented builds are left alone.
if(isIpoSupported AND BUILD_SHARED_LIBS AND FONTENGINE_SANITIZER STREQUAL "" AND NOT FONTENGINE_COVERAGE)
  set(FONTENGINE_OPTIMISE_ACROSS_FILES ON)
endif()

function(fontengine_add_library target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXPORT_NAME;RUNTIME_COMPONENT" "SOURCES;HEADERS")

  if(NOT arg_RUNTIME_COMPONENT)
    set(arg_RUNTIME_COMPONENT Runtime)
  endif()

  add_library(${target} ${arg_SOURCES})
  add_library(FontEngine::${arg_EXPORT_NAME} ALIAS ${target})
  target_sources(${target} PUBLIC
    FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${arg_HEADERS})
  target_compile_features(${target} PUBLIC cxx_std_17)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:fontengine_flags>)
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${target} PUBLIC FONTENGINE_STATIC)
  endif()

  if(FONTENGINE_OPTIMISE_ACROSS_FILES)
    # No program interposes functions of these libraries at load time.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition -fno-plt)
    set_target_properties(${target} PROPERTIES
      INTERPROCEDURAL_OPTIMIZATION_RELEASE ON
      INTERPROCEDURAL_OPTIMIZATION_RELWITHDEBINFO ON)
  endif()

  set(exports "${PROJECT_SOURCE_DIR}/cmake/exports.map")
  if(BUILD_SHARED_LIBS)
    target_link_options(${target} PRIVATE
      "LINKER:--version-script=${exports}" "LINKER:--as-needed" "LINKER:-z,defs,--no-undefined")
    if(NOT FONTENGINE_SANITIZER STREQUAL "")
      # The executable supplies the sanitizers' entry points.
      target_link_options(${target} PRIVATE "LINKER:-z,undefs")
    endif()
  endif()
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${arg_EXPORT_NAME}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON
    VERIFY_INTERFACE_HEADER_SETS ON
    INSTALL_RPATH "$ORIGIN"
    LINK_DEPENDS "${exports}")

  install(TARGETS ${target}
    EXPORT FontEngine${arg_EXPORT_NAME}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${arg_RUNTIME_COMPONENT}
      NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT Development
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/fontengine" COMPONENT Development)
endfunction()
