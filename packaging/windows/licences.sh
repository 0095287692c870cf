#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Gathers the licences of everything that lies beside the programs for Windows or is part of them:
#   licences.sh LIBRARIES FOLDER PROJECT
set -euo pipefail
libraries="$1" folder="$2" project="$3"
mkdir -p "$folder"

take() {  # NAME FILE...
  local name="$1"
  shift
  cat "$@" >"$folder/$name.txt"
}

take "Kestrin Launcher" "$project/LICENSE"
# Debian's lists of who wrote what, with the texts of the licences.
take "Qt" /usr/share/doc/qt6-base-dev/copyright
take "curl" "$libraries/sources/curl/debian/copyright"
take "chmlib" "$libraries/sources/chmlib/debian/copyright"
take "libmicrohttpd" "$libraries/sources/microhttpd/debian/copyright"
take "hidapi" "$libraries"/sources/hidapi/LICENSE*.txt
for name in sndfile:libsndfile flac:FLAC ogg:Ogg vorbis:Vorbis opus:Opus mpg123:mpg123 lame:LAME soxr:libsoxr zip:libzip zlib:zlib; do
  take "${name#*:}" "$libraries/sources/${name%:*}/debian/copyright"
done
take "libebur128" "$libraries/sources/ebur128/COPYING"
take "CLI11" /usr/share/doc/libcli11-dev/copyright
take "JSON for Modern C++" /usr/share/doc/nlohmann-json3-dev/copyright
take "GCC runtime libraries" /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright
take "mingw-w64 runtime" /usr/share/doc/mingw-w64-x86-64-dev/copyright
take "NSIS" /usr/share/doc/nsis/copyright
# Those that the lists only name.
for text in LGPL-2 LGPL-2.1 LGPL-3 GPL-2 GPL-3; do take "$text" "/usr/share/common-licenses/$text"; done

cat >"$folder/README.txt" <<'TEXT'
Kestrin Launcher is free software under the MIT licence. It is put together with the work of others, whose licences lie here.

Beside the programs, as libraries (DLL) of their own that may be replaced:
  Qt                      GNU LGPL 3 (also in the folders platforms, styles and imageformats)
  GCC runtime libraries   GNU GPL 3 with the GCC Runtime Library Exception (libgcc_s_seh-1, libstdc++-6)
  mingw-w64 runtime       MIT and others (libwinpthread-1)

Part of the programs:
  curl                    curl's licence
  chmlib                  GNU LGPL 2.1
  libmicrohttpd           GNU LGPL 2.1
  hidapi                  BSD, or its own, or GNU GPL 3, as one likes
  libsndfile              GNU LGPL 2.1
  FLAC                    BSD
  Ogg, Vorbis, Opus       BSD
  mpg123                  GNU LGPL 2.1
  LAME                    GNU LGPL 2
  libsoxr                 GNU LGPL 2.1
  libebur128              MIT
  libzip                  BSD
  zlib                    zlib's licence
  CLI11                   BSD
  JSON for Modern C++     MIT

The setup was made with NSIS (zlib licence).

They are built from Debian's source packages of the same names (qt6-base, curl, chmlib, libmicrohttpd, hidapi, libsndfile, flac,
libogg, libvorbis, opus, mpg123, lame, libsoxr, libebur128, libzip, zlib, gcc-mingw-w64, mingw-w64) and unchanged but for Debian's patches and one line of chmlib: it lets others read the file that it has open. The
sources of Kestrin Launcher say in packaging/windows with which versions, make that change there in recipes.sh, and build the
programs anew with others, with the one command "./package windows".
TEXT
sed -i 's/$/\r/' "$folder/README.txt"
