# cpack runs this file while it makes the packages. It adds maintainer scripts that call ldconfig to packages of shared
# libraries. Our trigger calls ldconfig once for a whole installation, so this removes the scripts.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree "${CPACK_TEMPORARY_DIRECTORY}/without-scripts")
  file(REMOVE_RECURSE "${tree}")
  execute_process(COMMAND dpkg-deb --raw-extract "${package}" "${tree}" COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS "${tree}/DEBIAN/triggers")
    file(REMOVE "${tree}/DEBIAN/postinst" "${tree}/DEBIAN/postrm")
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build "${tree}" "${package}"
      OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
  file(REMOVE_RECURSE "${tree}")
endforeach()
