# The window needs Qt; the command line, the demo set and the core do not. Where Qt is missing, only the window is left out.
# Sets KESTRIN_WITH_WINDOW.
set(KESTRIN_WITH_WINDOW OFF)
if(KESTRIN_CORE_ONLY)
  return()
endif()

find_package(Qt6 6.4 QUIET COMPONENTS Widgets Svg)
if(NOT Qt6_FOUND)
  message(STATUS
    "Qt 6.4 or later with its modules Widgets and Svg was not found: the window program is left out, kestrinctl is built. "
    "On Debian: apt install qt6-base-dev qt6-svg-dev")
  return()
endif()
set(KESTRIN_WITH_WINDOW ON)

# kestrin_qt_library(NAME SOURCES file... [LINK library...] [PRIVATE_LINK library...])
# A static library whose classes may have signals and slots.
function(kestrin_qt_library name)
  kestrin_library(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PUBLIC Qt6::Widgets)
endfunction()

# kestrin_ui_test(NAME SOURCES file... [LINK library...])
# A GoogleTest program around one QApplication; it needs no display.
function(kestrin_ui_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/QtMain.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  kestrin_test_options(${name})
  target_link_libraries(${name} PRIVATE kestrin_flags ${arg_LINK} Qt6::Widgets GTest::gmock)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
