# SPDX-License-Identifier: MIT
# Run by "cmake --install": the demo set as the program's "Examples". A set names its sounds by their whole paths, which
# become those that they get here; where somebody puts the folder elsewhere, the programs find the sounds beside the set.
# From Install.cmake: `from`, `work`, `data` and `is_windows`.
set(place "${data}/Examples")
if(NOT IS_ABSOLUTE "${data}")
  set(place "${CMAKE_INSTALL_PREFIX}/${data}/Examples")
endif()
set(named "${place}/")
if(is_windows)
  # Where the setup puts it unless the person wants it elsewhere.
  set(named "C:\\Program Files\\Kestrin Launcher\\Examples\\")
endif()

file(STRINGS "${from}/demo.lscfg" lines ENCODING UTF-8)
set(set "")
foreach(line IN LISTS lines)
  if(line MATCHES "[^/\\]+[.]lsu$")
    set(line "${named}${CMAKE_MATCH_0}")
  endif()
  string(APPEND set "${line}\r\n")
endforeach()
file(WRITE "${work}/demo.lscfg" "${set}")

file(GLOB sounds "${from}/*.lsu")
file(INSTALL ${work}/demo.lscfg ${sounds} DESTINATION "${place}" TYPE FILE)
