# Installs the CMake package and the pkg-config file, by which clients find the libraries, and the examples.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/FontEngine")

foreach(component Utils Gfx FontLoaders FontEngine TextLayout CairoAdapter)
  if(TARGET FontEngine::${component})
    install(EXPORT FontEngine${component}Targets NAMESPACE FontEngine:: DESTINATION "${package_dir}"
      COMPONENT Development)
  endif()
endforeach()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/FontEngineConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/FontEngineConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/FontEngineConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/FontEngineConfig.cmake"
  "${PROJECT_BINARY_DIR}/FontEngineConfigVersion.cmake"
  DESTINATION "${package_dir}"
  COMPONENT Development)

# The pkg-config file computes its prefix from its own location, so an installed tree can be moved.
set(pc_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pc_prefix "/prefix/${pc_dir}" "/prefix")
set(pc_requires "freetype2")
set(pc_libs "-lFontEngine -lFontEngineFontLoaders -lFontEngineGfx -lFontEngineUtils")
set(pc_private_requires "fontconfig harfbuzz")
if(FONTENGINE_BUILD_VARIABLE_FONTS)
  string(APPEND pc_private_requires " harfbuzz-subset")
endif()
set(pc_private_libs "-pthread")
set(pc_cflags "")
if(TARGET FontEngine::CairoAdapter)
  string(APPEND pc_requires " cairo")
  string(PREPEND pc_libs "-lFontEngineCairo ")
endif()
if(NOT BUILD_SHARED_LIBS)
  # Only archives are installed, so every client must link their dependencies, with or without --static.
  string(APPEND pc_requires " ${pc_private_requires}")
  string(APPEND pc_libs " ${pc_private_libs}")
  set(pc_private_requires "")
  set(pc_private_libs "")
  set(pc_cflags "-DFONTENGINE_STATIC")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/FontEngine.pc.in" "${PROJECT_BINARY_DIR}/FontEngine.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/FontEngine.pc" DESTINATION "${pc_dir}" COMPONENT Development)

# A file of its own, so that clients of the engine alone do not link ICU.
if(TARGET FontEngine::TextLayout)
  set(text_layout_requires "FontEngine = ${PROJECT_VERSION}")
  set(text_layout_private_requires "harfbuzz, icu-uc")
  if(NOT BUILD_SHARED_LIBS)
    string(APPEND text_layout_requires ", harfbuzz, icu-uc")
    set(text_layout_private_requires "")
  endif()
  configure_file("${PROJECT_SOURCE_DIR}/cmake/FontEngineTextLayout.pc.in"
    "${PROJECT_BINARY_DIR}/FontEngineTextLayout.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/FontEngineTextLayout.pc" DESTINATION "${pc_dir}" COMPONENT Development)
endif()

if(TARGET FontEngine::CairoAdapter)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/fontengine"
    COMPONENT Development)
endif()
