# SPDX-License-Identifier: MIT
# The window needs Qt; the command line, the demo set and the core do not. Where Qt is missing, only the window is left out.
# Sets KESTRIN_WITH_WINDOW.
set(KESTRIN_WITH_WINDOW OFF)
if(KESTRIN_CORE_ONLY)
  return()
endif()

# Drawings become pictures on the machine that builds: only there Svg is needed.
if(KESTRIN_HOST_TOOLS)
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets)
else()
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets Svg)
endif()
if(NOT Qt6_FOUND)
  message(STATUS
    "Qt 6.4 or later with its modules Widgets and Svg was not found: the window program is left out, kestrinctl is built. "
    "On Debian: apt install qt6-base-dev qt6-svg-dev")
  return()
endif()
set(KESTRIN_WITH_WINDOW ON)

# The headers that nearly every source of the window reads, compiled ahead once for all of its libraries.
set(KESTRIN_QT_HEADERS
  <QAction> <QApplication> <QHBoxLayout> <QKeyEvent> <QLabel> <QMenu> <QMouseEvent> <QPainter> <QPainterPath> <QPushButton>
  <QSlider> <QString> <QStyle> <QTimer> <QToolButton> <QUrl> <QVBoxLayout> <QWidget>)
add_library(kestrin_qt_headers STATIC ${CMAKE_CURRENT_LIST_DIR}/Headers.cpp)
target_link_libraries(kestrin_qt_headers PRIVATE kestrin_flags Qt6::Widgets)
target_precompile_headers(kestrin_qt_headers PRIVATE ${KESTRIN_QT_HEADERS}
  <algorithm> <array> <chrono> <cstdint> <filesystem> <functional> <memory> <optional> <string> <vector>)

# kestrin_qt_library(NAME SOURCES file... [LINK library...] [PRIVATE_LINK library...])
# A static library whose classes may have signals and slots.
function(kestrin_qt_library name)
  kestrin_library(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  target_link_libraries(${name} PUBLIC Qt6::Widgets)
  target_precompile_headers(${name} REUSE_FROM kestrin_qt_headers)
endfunction()
