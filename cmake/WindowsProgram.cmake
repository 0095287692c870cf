# SPDX-License-Identifier: MIT
# kestrin_windows_program(NAME DESCRIPTION [ICON_FILE])
# Gives a program what Windows reads of it before it runs it: the manifest (UTF-8, long paths, scaling for each screen),
# its version, and the icon where there is a file. Elsewhere nothing.
if(WIN32)
  enable_language(RC)
endif()

function(kestrin_windows_program program_name program_description)
  if(NOT WIN32)
    return()
  endif()
  set(program_manifest ${PROJECT_SOURCE_DIR}/src/programs/windows/program.manifest)
  set(program_icon "")
  if(ARGC GREATER 2)
    # The first icon is the one that the desktop shows.
    set(program_icon "1 ICON \"${ARGV2}\"")
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${program_name}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/src/programs/windows/program.rc.in ${resource} @ONLY)
  set_source_files_properties(${resource} PROPERTIES OBJECT_DEPENDS "${program_manifest};${ARGN}")
  target_sources(${program_name} PRIVATE ${resource})
endfunction()
