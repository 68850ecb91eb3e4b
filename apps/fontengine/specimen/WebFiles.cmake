# Generates what sources include: WebFiles.inc, the files of web/ as strings, and BlockNameTable.inc, the names of
# Unicode's blocks. Sets block_name_table.

function(embed_web_files output)
  file(READ specimen/web/page.html page_template)
  file(READ specimen/web/page.css page_style)
  file(READ specimen/web/page.js page_script)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    specimen/web/page.html specimen/web/page.css specimen/web/page.js)
  configure_file(specimen/WebFiles.inc.in "${output}" @ONLY)
endfunction()

embed_web_files("${CMAKE_CURRENT_BINARY_DIR}/generated/WebFiles.inc")

# src/FontLoaders has found the file and Python.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(block_name_table "${CMAKE_CURRENT_BINARY_DIR}/generated/BlockNameTable.inc")
set(generate_blocks "${PROJECT_SOURCE_DIR}/scripts/generate-unicode-blocks")
add_custom_command(
  OUTPUT "${block_name_table}"
  COMMAND Python3::Interpreter "${generate_blocks}" "${FONTENGINE_UNICODE_BLOCKS}" "${block_name_table}" --names
  DEPENDS "${generate_blocks}" "${FONTENGINE_UNICODE_BLOCKS}"
  COMMENT "Generating the names of Unicode blocks"
  VERBATIM)
