# SPDX-License-Identifier: MIT
# kestrin_core_library(NAME SOURCES file... [LINK library...])
# A static library of the core. It finds the headers of the core and no others.
function(kestrin_core_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC kestrin_flags ${arg_LINK})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src/core)
  list(LENGTH arg_SOURCES count)
  if(KESTRIN_UNITY AND count GREATER 1)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
  endif()
endfunction()

# kestrin_library(NAME SOURCES file... [LINK library...] [PRIVATE_LINK library...])
# Any other static library of this project. What stands under LINK is part of its headers, PRIVATE_LINK is not.
function(kestrin_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  kestrin_core_library(${name} SOURCES ${arg_SOURCES} LINK ${arg_LINK})
  target_link_libraries(${name} PRIVATE ${arg_PRIVATE_LINK})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  # What is quick has to be quick in the core; elsewhere the last bit of speed is felt in the build alone.
  if(NOT MSVC)
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O2>)
  endif()
endfunction()
