# SPDX-License-Identifier: MIT
# CMake toolchain: from Debian to 64-bit Windows with mingw-w64. Threads are those of POSIX, as the C++ library wants them.
# The libraries are those that ./package windows builds under build/windows.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

get_filename_component(kestrin_libraries "${CMAKE_CURRENT_LIST_DIR}/../../build/windows/libraries" ABSOLUTE)
list(APPEND CMAKE_PREFIX_PATH ${kestrin_libraries}/installed ${kestrin_libraries}/qt)
list(REMOVE_DUPLICATES CMAKE_PREFIX_PATH)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Here, not in the environment: the build configures itself anew at times, and the system's own libraries would be found.
set(ENV{PKG_CONFIG_LIBDIR} ${kestrin_libraries}/installed/lib/pkgconfig)
set(PKG_CONFIG_ARGN --static)

# Tools of Qt that run while something is built are the system's own.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
