# Installs what a client finds the libraries by: the CMake package and the pkg-config file.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/FontEngine")

foreach(component Utils Gfx FontLoaders FontEngine CairoAdapter)
  if(TARGET FontEngine::${component})
    install(EXPORT FontEngine${component}Targets NAMESPACE FontEngine:: DESTINATION "${package_dir}")
  endif()
endforeach()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/FontEngineConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/FontEngineConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/FontEngineConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/FontEngineConfig.cmake"
  "${PROJECT_BINARY_DIR}/FontEngineConfigVersion.cmake"
  DESTINATION "${package_dir}")

configure_file("${PROJECT_SOURCE_DIR}/cmake/FontEngine.pc.in" "${PROJECT_BINARY_DIR}/FontEngine.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/FontEngine.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
