# SPDX-License-Identifier: MIT
# Where things are installed. On Windows all lies in one folder, as people there expect it of a program's folder and as the
# portable zip needs it; elsewhere the system's folders take what is theirs.
# Sets KESTRIN_BIN_DIR, KESTRIN_DATA_DIR and, the latter seen from the former, KESTRIN_DATA_FROM_PROGRAMS.
include(GNUInstallDirs)
if(WIN32)
  set(KESTRIN_BIN_DIR .)
  set(KESTRIN_DATA_DIR .)
  set(KESTRIN_DATA_FROM_PROGRAMS .)
else()
  set(KESTRIN_BIN_DIR ${CMAKE_INSTALL_BINDIR})
  set(KESTRIN_DATA_DIR ${CMAKE_INSTALL_DATADIR}/kestrin)
  # The programs look for their data from where they stand, so that a tree that is moved keeps working.
  file(RELATIVE_PATH KESTRIN_DATA_FROM_PROGRAMS ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR}/kestrin)
endif()
