# Makes the table of Unicode's blocks out of the Unicode character database: sets unicode_block_table.

find_package(Python3 REQUIRED COMPONENTS Interpreter)
find_file(FONTENGINE_UNICODE_BLOCKS Blocks.txt PATHS /usr/share/unicode NO_DEFAULT_PATH
  DOC "Blocks.txt of the Unicode character database")
if(NOT FONTENGINE_UNICODE_BLOCKS)
  message(FATAL_ERROR "Blocks.txt of the Unicode character database is missing: install Debian's package "
    "unicode-data, or set FONTENGINE_UNICODE_BLOCKS to the file")
endif()

set(unicode_block_table "${CMAKE_CURRENT_BINARY_DIR}/generated/UnicodeBlockTable.inc")
set(generate_blocks "${PROJECT_SOURCE_DIR}/scripts/generate-unicode-blocks")
file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/generated")
add_custom_command(
  OUTPUT "${unicode_block_table}"
  COMMAND Python3::Interpreter "${generate_blocks}" "${FONTENGINE_UNICODE_BLOCKS}" "${unicode_block_table}"
  DEPENDS "${generate_blocks}" "${FONTENGINE_UNICODE_BLOCKS}"
  COMMENT "Generating the table of Unicode blocks"
  VERBATIM)
