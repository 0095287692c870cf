# kestrin_core_library(NAME SOURCES file... [LINK library...])
# A static library of the core. It finds the headers of the core and no others.
function(kestrin_core_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC kestrin_flags ${arg_LINK})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src/core)
  list(LENGTH arg_SOURCES count)
  if(KESTRIN_UNITY AND count GREATER 1)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON)
  endif()
endfunction()

# kestrin_library(NAME SOURCES file... [LINK library...] [PRIVATE_LINK library...])
# Any other static library of this project. What stands under LINK is part of its headers, PRIVATE_LINK is not.
function(kestrin_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  kestrin_core_library(${name} SOURCES ${arg_SOURCES} LINK ${arg_LINK})
  target_link_libraries(${name} PRIVATE ${arg_PRIVATE_LINK})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
endfunction()

# What every test program is compiled with: its own code unoptimised, which takes half the time to build and hardly longer
# to run, since what it tests lies in the libraries.
function(kestrin_test_options name)
  target_include_directories(${name} PRIVATE
    ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/src/core ${PROJECT_SOURCE_DIR}/tests)
  if(NOT MSVC)
    target_compile_options(${name} PRIVATE -O0)
  endif()
  # Either way the test framework's headers are read once for a program, not once for each of its files.
  if(KESTRIN_UNITY)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 20)
  else()
    target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  endif()
endfunction()

# kestrin_test(NAME SOURCES file... [LINK library...])
# A GoogleTest program; every test case in it is known to ctest. Sources may include "support/..." from tests/.
function(kestrin_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  kestrin_test_options(${name})
  target_link_libraries(${name} PRIVATE kestrin_flags ${arg_LINK} GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
