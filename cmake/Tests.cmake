# SPDX-License-Identifier: MIT
# The headers that nearly every source of the tests reads. They are compiled ahead, once for all programs of a kind.
set(KESTRIN_TEST_HEADERS
  <gmock/gmock.h> <gtest/gtest.h> <algorithm> <array> <chrono> <cstdint> <filesystem> <functional> <memory> <optional>
  <span> <string> <string_view> <system_error> <vector>)

if(KESTRIN_WITH_WINDOW)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
endif()

# kestrin_test(NAME [SOURCES file...] [LINK library...] [COST number])
# A GoogleTest program; every test case in it is known to ctest. Sources may include "support/..." from tests/.
# COST: the tests that wait most of their time say a high one. ctest starts these first, and others run beside them.
function(kestrin_test name)
  cmake_parse_arguments(arg "" "COST" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK} GTest::gtest_main)
  kestrin_test_options(${name} kestrin_test_support)
  kestrin_discover_tests(${name} "" COST "${arg_COST}")
endfunction()

# kestrin_ui_test(NAME SOURCES file... [LINK library...])
# A GoogleTest program around one QApplication; it needs no display.
function(kestrin_ui_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK} kestrin_qt_main Qt6::Test)
  kestrin_test_options(${name} kestrin_qt_main)
  kestrin_discover_tests(${name} "" ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# kestrin_rig(NAME SOURCES file... [LINK library...])
# A GoogleTest program whose tests each have a mocked system of their own. The mock redirects /dev and /sys of the
# program, so the program runs under a wrapper.
function(kestrin_rig name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK} kestrin_mock_board GTest::gtest_main)
  kestrin_test_options(${name} kestrin_test_support)
  if(KESTRIN_SANITIZE MATCHES "address")
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/rig/SanitizerDefaults.cpp)
  endif()
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR ${UMOCKDEV_WRAPPER})
  kestrin_discover_tests(${name} "rig." COST 20)
endfunction()

# kestrin_support_library(NAME SOURCES file... [LINK library...])
# A static library of what several test programs share.
function(kestrin_support_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_LINK})
  kestrin_test_options(${name})
endfunction()

function(kestrin_discover_tests name prefix)
  gtest_discover_tests(${name} TEST_PREFIX "${prefix}" DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 ${ARGN})
endfunction()

# kestrin_test_options(NAME [HEADERS])
# What code of tests is compiled with: unoptimised, which takes half the time to build and hardly longer to run, since what
# it tests lies in the libraries. HEADERS is the target whose headers, compiled ahead, it takes.
function(kestrin_test_options name)
  target_link_libraries(${name} PRIVATE kestrin_flags GTest::gmock)
  target_include_directories(${name} PRIVATE
    ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/src/core ${PROJECT_SOURCE_DIR}/tests)
  if(NOT MSVC)
    # Headers compiled ahead are taken only where all macros agree, and some libraries ask for -pthread, which sets one.
    target_compile_options(${name} PRIVATE -O0 -pthread)
  endif()
  get_target_property(type ${name} TYPE)
  if(type STREQUAL "EXECUTABLE")
    kestrin_windows_program(${name} "A test of Kestrin Launcher")
  endif()
  if(KESTRIN_UNITY)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 24)
  endif()
  if(ARGC GREATER 1)
    target_precompile_headers(${name} REUSE_FROM ${ARGV1})
  endif()
endfunction()
