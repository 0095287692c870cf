# SPDX-License-Identifier: MIT
# What "cmake --install" puts where. docs/packages.md lists it, and scripts/package/compare.sh holds the list against what
# is really there. Components: programs, data (what the programs read), examples, and, on Linux only, desktop (menu, kinds of
# files, icons), reference (manual pages and completions) and udev (who may open boards).
install(TARGETS kestrinctl RUNTIME DESTINATION ${KESTRIN_BIN_DIR} COMPONENT programs)
install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/KestrinLEDS.ldcfg DESTINATION ${KESTRIN_DATA_DIR} COMPONENT data)
if(KESTRIN_WITH_WINDOW)
  install(TARGETS kestrin RUNTIME DESTINATION ${KESTRIN_BIN_DIR} COMPONENT programs)
  install(FILES ${KESTRIN_PICTURES} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/kestrinusb.chm
    DESTINATION ${KESTRIN_DATA_DIR} COMPONENT data)
endif()

install(CODE "
set(from [[${CMAKE_BINARY_DIR}/demo]])
set(work [[${CMAKE_BINARY_DIR}/examples]])
set(data [[${KESTRIN_DATA_DIR}]])
set(is_windows [[${WIN32}]])" COMPONENT examples)
install(SCRIPT ${CMAKE_CURRENT_LIST_DIR}/InstallExamples.cmake COMPONENT examples)

# Only on Linux desktops it is by files in known places that a program makes itself known.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  return()
endif()
set(linux ${PROJECT_SOURCE_DIR}/packaging/linux)
# Whatever the architecture: no folder for libraries.
install(FILES ${linux}/70-kestrin.rules DESTINATION lib/udev/rules.d COMPONENT udev)

set(KESTRIN_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions CACHE STRING "Where zsh looks for completions")
foreach(program IN LISTS KESTRIN_REFERENCE_PROGRAMS)
  install(FILES ${KESTRIN_REFERENCE}/${program}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT reference)
  install(FILES ${KESTRIN_REFERENCE}/${program}.bash RENAME ${program}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT reference)
  install(FILES ${KESTRIN_REFERENCE}/_${program} DESTINATION ${KESTRIN_ZSH_COMPLETIONS} COMPONENT reference)
  install(FILES ${KESTRIN_REFERENCE}/${program}.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT reference)
endforeach()

if(NOT KESTRIN_WITH_WINDOW)
  return()
endif()
# Screenshots are fetched from there by programs that show what can be installed.
set(KESTRIN_HOME_URL "https://kestrin.example" CACHE STRING "Where the project is at home")
configure_file(${linux}/kestrin.metainfo.xml.in ${CMAKE_BINARY_DIR}/example.kestrin.launcher.metainfo.xml @ONLY)
install(FILES ${linux}/kestrin.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT desktop)
install(FILES ${linux}/kestrin.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT desktop)
install(FILES ${CMAKE_BINARY_DIR}/example.kestrin.launcher.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT desktop)
install(DIRECTORY ${KESTRIN_ICONS}/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons COMPONENT desktop)
install(FILES ${PROJECT_SOURCE_DIR}/assets/icons/kestrin.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT desktop)
foreach(kind sound-set led-settings sound)
  install(FILES ${PROJECT_SOURCE_DIR}/assets/icons/application-x-kestrin-${kind}.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/mimetypes COMPONENT desktop)
endforeach()
