# The Debian packages: `cmake --workflow --preset package` leaves them in build/package.
#
# The name of the runtime package contains the soname's version, so that two versions can be installed side by side.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME fontengine)
# Each description below begins with its own summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_CONTACT "FontEngine <fontengine@fontengine.invalid>" CACHE STRING
  "Name and address of whoever builds the packages")
set(CPACK_COMPONENTS_ALL Runtime Development Tools)
if(TARGET FontEngine::TextLayout)
  list(APPEND CPACK_COMPONENTS_ALL TextLayoutRuntime)
endif()
if(NOT BUILD_SHARED_LIBS)
  list(REMOVE_ITEM CPACK_COMPONENTS_ALL Runtime TextLayoutRuntime)
endif()
if(NOT TARGET fontengine)
  list(REMOVE_ITEM CPACK_COMPONENTS_ALL Tools)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS)
foreach(library Utils Gfx FontLoaders FontEngine TextLayout CairoAdapter)
  if(TARGET FontEngine::${library})
    get_target_property(folder FontEngine::${library} BINARY_DIR)
    list(APPEND CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${folder}")
  endif()
endforeach()

set(debian_runtime "libfontengine${PROJECT_VERSION_MAJOR}")
set(debian_licence "Licence: not chosen yet.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${debian_runtime}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/debian/triggers")
set(CPACK_POST_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian/DropLdconfigScripts.cmake")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "font engine that turns font descriptions into drawn text
FontEngine renders the glyphs of a text once and caches them, as bitmaps at
sub-pixel positions, coloured images and outlines.
.
This package holds the shared libraries.
.
${debian_licence}")

# A package of its own, so that programs that only draw do not install ICU.
set(CPACK_DEBIAN_TEXTLAYOUTRUNTIME_PACKAGE_NAME "libfontenginetextlayout${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_TEXTLAYOUTRUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_TEXTLAYOUTRUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TEXTLAYOUTRUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/debian/triggers")
set(CPACK_COMPONENT_TEXTLAYOUTRUNTIME_DEPENDS Runtime)
set(CPACK_COMPONENT_TEXTLAYOUTRUNTIME_DESCRIPTION "font engine that turns font descriptions into drawn text - text layout
FontEngine renders the glyphs of a text once and caches them, as bitmaps at
sub-pixel positions, coloured images and outlines.
.
This package holds the shared library that shapes text in every script and
breaks it into lines.
.
${debian_licence}")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libfontengine-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# The packages that the headers include from and that the pkg-config file requires.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libboost-dev (>= 1.74), libfontconfig-dev, libfreetype-dev, libharfbuzz-dev")
if(TARGET FontEngine::CairoAdapter)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libcairo2-dev")
endif()
if(TARGET FontEngine::TextLayout)
  string(APPEND CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ", libicu-dev")
endif()
if(BUILD_SHARED_LIBS)
  set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
  set(CPACK_COMPONENT_TOOLS_DEPENDS Runtime)
  if(TARGET FontEngine::TextLayout)
    list(APPEND CPACK_COMPONENT_DEVELOPMENT_DEPENDS TextLayoutRuntime)
    list(APPEND CPACK_COMPONENT_TOOLS_DEPENDS TextLayoutRuntime)
  endif()
endif()
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "font engine that turns font descriptions into drawn text - development
FontEngine renders the glyphs of a text once and caches them, as bitmaps at
sub-pixel positions, coloured images and outlines.
.
This package holds the headers, the CMake package and the pkg-config file.
.
${debian_licence}")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME fontengine-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "command that draws text into images and tells about fonts
The command fontengine draws text into PNG, SVG and PDF files, tells what a
font is and finds which font draws which character.
.
${debian_licence}")

include(FontEngineDebianDocs)
include(CPack)
