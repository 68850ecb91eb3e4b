# Builds the last-resort font into FontLoaders and installs its notice, without which it must not be passed on.

find_file(FONTENGINE_EMBEDDED_FONT DejaVuSans.ttf PATHS /usr/share/fonts/truetype/dejavu NO_DEFAULT_PATH
  DOC "The font that is built into FontLoaders")
find_file(FONTENGINE_EMBEDDED_FONT_NOTICE copyright PATHS /usr/share/doc/fonts-dejavu-core NO_DEFAULT_PATH
  DOC "The copyright notice of the font that is built into FontLoaders")
foreach(file FONTENGINE_EMBEDDED_FONT FONTENGINE_EMBEDDED_FONT_NOTICE)
  if(NOT EXISTS "${${file}}")
    message(FATAL_ERROR "FONTENGINE_EMBED_FONT is on, but ${file} names no file (${${file}}): install Debian's "
      "package fonts-dejavu-core, set ${file} to the file, or turn FONTENGINE_EMBED_FONT off")
  endif()
endforeach()

# A library of its own, because the flags of the C++ sources are not for the assembler.
enable_language(ASM)
add_library(fontengine_embedded_font OBJECT Private/EmbeddedFontData.S)
target_compile_definitions(fontengine_embedded_font PRIVATE
  FONTENGINE_EMBEDDED_FONT_FILE="${FONTENGINE_EMBEDDED_FONT}")
set_source_files_properties(Private/EmbeddedFontData.S PROPERTIES OBJECT_DEPENDS "${FONTENGINE_EMBEDDED_FONT}")

target_sources(FontEngineFontLoaders PRIVATE
  Private/EmbeddedFont.cpp $<TARGET_OBJECTS:fontengine_embedded_font>)
install(FILES "${FONTENGINE_EMBEDDED_FONT_NOTICE}"
  DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/fontengine" RENAME DejaVuSans-copyright
  COMPONENT Notices)
