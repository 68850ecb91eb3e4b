# The files that Debian requires in each package's documentation folder. An ordinary installation omits them.

find_program(FONTENGINE_GZIP gzip REQUIRED)

set(debian_font_notice "")
if(FONTENGINE_EMBED_FONT)
  file(READ "${FONTENGINE_EMBEDDED_FONT_NOTICE}" debian_font_notice)
  string(PREPEND debian_font_notice "
The libraries contain the font DejaVu Sans, whose notice follows.

")
endif()
# If SOURCE_DATE_EPOCH is set, it replaces the current time.
string(TIMESTAMP debian_date "%a, %d %b %Y %H:%M:%S +0000" UTC)

set(debian_docs "${PROJECT_BINARY_DIR}/debian")
foreach(file copyright changelog runtime-overrides)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/debian/${file}.in" "${debian_docs}/${file}" @ONLY)
endforeach()
execute_process(COMMAND "${FONTENGINE_GZIP}" -9nc "${debian_docs}/changelog"
  OUTPUT_FILE "${debian_docs}/changelog.Debian.gz" COMMAND_ERROR_IS_FATAL ANY)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} key)
  install(FILES "${debian_docs}/copyright" "${debian_docs}/changelog.Debian.gz"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${key}_PACKAGE_NAME}"
    COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
if(Runtime IN_LIST CPACK_COMPONENTS_ALL)
  install(FILES "${debian_docs}/runtime-overrides"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides" RENAME ${debian_runtime}
    COMPONENT Runtime EXCLUDE_FROM_ALL)
endif()
