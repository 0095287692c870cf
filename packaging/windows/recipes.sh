# SPDX-License-Identifier: MIT
# How each library for Windows is built: bash -euo pipefail recipes.sh NAME. Sourced without a name by libraries.sh, which
# says what lies where.
# shellcheck shell=bash

windows_target=x86_64-w64-mingw32
. "$project/packaging/windows/sources.sh"

build_with_cmake() {  # SOURCES NAME [cmake options]
  local sources="$1" work="$windows_libraries/made/$2"
  shift 2
  rm -rf "$work"
  cmake -S "$sources" -B "$work" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$project/packaging/windows/mingw64.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
  cmake --build "$work" -j "$jobs"
  cmake --install "$work"
}

# Configures in a folder of its own; the options say which parts are built.
configure_with_autotools() {  # SOURCES NAME [configure options]
  local sources="$1" work="$windows_libraries/made/$2"
  shift 2
  [ -e "$sources/configure" ] || (cd "$sources" && autoreconf -fi)
  rm -rf "$work"
  mkdir -p "$work"
  (cd "$work" && "$sources/configure" --host=$windows_target --prefix="$windows_libraries/installed" \
    CC="ccache $windows_target-gcc-posix" --disable-shared --enable-static "$@")
}

install_with_make() {  # NAME FOLDER-TO-BUILD FOLDER-TO-INSTALL...
  local work="$windows_libraries/made/$1" folder
  make -s -C "$work/$2" -j "$jobs"
  for folder in "${@:2}"; do make -s -C "$work/$folder" install; done
  make -s -C "$work" install-pkgconfigDATA
}

# Headers alone are the same for every system.
build_headers() {
  local installed="$windows_libraries/installed"
  cp -r /usr/include/CLI /usr/include/nlohmann "$installed/include/"
  cp -r /usr/share/cmake/CLI11 /usr/share/cmake/nlohmann_json "$installed/lib/cmake/"
}

# Two files: what its makers wrote for building it on Windows is for the tools of its time.
build_chmlib() {
  local sources="$windows_libraries/sources/chmlib/src" work="$windows_libraries/made/chmlib" file
  unpack_source chmlib
  mkdir -p "$work"
  # As it stands, nobody else could read the help while one window has it open.
  sed -i '/CreateFileA(filename,/,/OPEN_EXISTING/s/^\( *\)0,$/\1FILE_SHARE_READ,/' "$sources/chm_lib.c"
  # Here and where Windows' other character set is used, which is so already.
  [ "$(grep -c FILE_SHARE_READ "$sources/chm_lib.c")" -eq 2 ]
  for file in chm_lib lzx; do "$windows_target-gcc-posix" -O2 -w -DWIN32 -c "$sources/$file.c" -o "$work/$file.o"; done
  rm -f "$windows_libraries/installed/lib/libchm.a"
  "$windows_target-ar" rcs "$windows_libraries/installed/lib/libchm.a" "$work/chm_lib.o" "$work/lzx.o"
  cp "$sources/chm_lib.h" "$windows_libraries/installed/include/"
}

build_hidapi() {
  unpack_source hidapi "${KESTRIN_HIDAPI-}"
  build_with_cmake "$windows_libraries/sources/hidapi" hidapi -DCMAKE_INSTALL_PREFIX="$windows_libraries/installed" \
    -DBUILD_SHARED_LIBS=OFF -DHIDAPI_BUILD_HIDTEST=OFF -DHIDAPI_WITH_TESTS=OFF
}

# Its configure does not take the one way to make threads that Windows has, unless it is let to find that by itself.
build_microhttpd() {
  unpack_source microhttpd
  configure_with_autotools "$windows_libraries/sources/microhttpd" microhttpd \
    --disable-https --disable-doc --disable-examples --disable-curl --with-threads=auto
  install_with_make microhttpd src/microhttpd src/include
}

# HTTP alone, and the system's own TLS under it, which knows the certificates that the system trusts.
build_curl() {
  unpack_source curl
  configure_with_autotools "$windows_libraries/sources/curl" curl --with-schannel \
    --disable-ldap --disable-ftp --disable-file --disable-dict --disable-telnet --disable-tftp --disable-pop3 --disable-imap \
    --disable-smb --disable-smtp --disable-gopher --disable-mqtt --disable-rtsp --disable-manual --disable-cookies \
    --disable-alt-svc --disable-hsts --disable-netrc --disable-dnsshuffle --disable-doh --disable-ntlm --disable-docs \
    --without-zlib --without-brotli --without-zstd --without-libpsl --without-nghttp2 --without-libidn2 --without-librtmp
  install_with_make curl lib include
}

# Libraries that come with what CMake wants, as they are by default but for the options.
build_plain() {  # NAME [cmake options]
  local name="$1"
  shift
  unpack_source "$name"
  build_with_cmake "$windows_libraries/sources/$name" "$name" -DCMAKE_INSTALL_PREFIX="$windows_libraries/installed" \
    -DBUILD_SHARED_LIBS=OFF -DBUILD_TESTING=OFF "$@"
}

# Libraries that come with what autotools want.
build_with_make() {  # NAME [configure options]
  local name="$1"
  shift
  unpack_source "$name"
  configure_with_autotools "$windows_libraries/sources/$name" "$name" "$@"
  make -s -C "$windows_libraries/made/$name" -j "$jobs"
  make -s -C "$windows_libraries/made/$name" install
}

# What the reader of sounds asks for, each no more than its library.
build_ogg() { build_plain ogg -DINSTALL_DOCS=OFF; }
build_vorbis() { build_plain vorbis; }
build_opus() { build_with_make opus --disable-extra-programs --disable-doc --disable-stack-protector --disable-hardening \
    "CFLAGS=-O2 -D_FORTIFY_SOURCE=0"; }
build_flac() {
  build_plain flac -DBUILD_CXXLIBS=OFF -DBUILD_PROGRAMS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_DOCS=OFF -DINSTALL_MANPAGES=OFF \
    -DWITH_OGG=OFF -DWITH_STACK_PROTECTOR=OFF -DWITH_FORTIFY_SOURCE=OFF
}
# It also builds what plays, and would take the sound service of the computer on which it is built for Windows' own.
build_mpg123() {
  build_with_make mpg123 --disable-components --enable-libmpg123 --disable-modules --with-audio=dummy --with-default-audio=dummy
}
# MP3 is read by mpg123 alone, but the reader of sounds takes both or none.
build_lame() { build_with_make lame --disable-frontend --disable-decoder --disable-analyzer-hooks; }
build_sndfile() {
  build_plain sndfile -DBUILD_PROGRAMS=OFF -DBUILD_EXAMPLES=OFF -DBUILD_REGTEST=OFF -DENABLE_CPACK=OFF -DENABLE_EXTERNAL_LIBS=ON \
    -DENABLE_MPEG=ON -DCMAKE_C_FLAGS=-DFLAC__NO_DLL -DINSTALL_MANPAGES=OFF -DCMAKE_DISABLE_FIND_PACKAGE_ALSA=ON -DCMAKE_DISABLE_FIND_PACKAGE_Speex=ON
  grep -qx '#define HAVE_EXTERNAL_XIPH_LIBS 1' "$windows_libraries/made/sndfile/src/config.h"
  grep -qx '#define HAVE_MPEG 1' "$windows_libraries/made/sndfile/src/config.h"
}
# What tells others where it is it installs on other systems only.
build_soxr() {
  build_plain soxr -DWITH_OPENMP=OFF -DBUILD_TESTS=OFF -DBUILD_EXAMPLES=OFF -DWITH_LSR_BINDINGS=OFF
  printf '%s\n' "prefix=$windows_libraries/installed" 'Name: soxr' 'Description: converter of sample rates' 'Version: 0.1.3' \
    'Libs: -L${prefix}/lib -lsoxr' 'Cflags: -I${prefix}/include' >"$windows_libraries/installed/lib/pkgconfig/soxr.pc"
}
build_ebur128() { build_plain ebur128 -DENABLE_INTERNAL_QUEUE_H=ON; }

# Its files for Windows are not in Debian's archive, and none of them is needed for the library alone.
build_zlib() {
  local sources="$windows_libraries/sources/zlib" work="$windows_libraries/made/zlib" installed="$windows_libraries/installed" file
  unpack_source zlib
  mkdir -p "$work"
  for file in adler32 compress crc32 deflate gzclose gzlib gzread gzwrite infback inffast inflate inftrees trees uncompr zutil; do
    ccache "$windows_target-gcc-posix" -O2 -c "$sources/$file.c" -o "$work/$file.o"
  done
  rm -f "$installed/lib/libz.a"
  "$windows_target-ar" rcs "$installed/lib/libz.a" "$work"/*.o
  cp "$sources/zlib.h" "$sources/zconf.h" "$installed/include/"
  sed -e "s|@prefix@|$installed|; s|@exec_prefix@|$installed|; s|@includedir@|$installed/include|; s|@VERSION@|1.2.13|" \
    -e "s|@libdir@|$installed/lib|; s|@sharedlibdir@|$installed/lib|" "$sources/zlib.pc.in" >"$installed/lib/pkgconfig/zlib.pc"
}
# Nothing but what ordinary ZIP files need.
build_zip() {
  build_plain zip -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF -DENABLE_ZSTD=OFF -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF \
    -DENABLE_MBEDTLS=OFF -DENABLE_OPENSSL=OFF -DENABLE_WINDOWS_CRYPTO=OFF -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF \
    -DBUILD_EXAMPLES=OFF -DBUILD_DOC=OFF
}

build_googletest() {
  unpack_source googletest
  build_with_cmake "$windows_libraries/sources/googletest" googletest \
    -DCMAKE_INSTALL_PREFIX="$windows_libraries/installed" -DBUILD_SHARED_LIBS=OFF -DCMAKE_CXX_STANDARD=17
}

# No more of it than a window needs. Its own copies of the small libraries are taken: Windows has none of them.
build_qt() {
  local name
  rm -rf "$windows_libraries/qt"
  if [ -n "${KESTRIN_WINDOWS_QT-}" ]; then
    mkdir "$windows_libraries/qt"
    tar -xf "$KESTRIN_WINDOWS_QT" -C "$windows_libraries/qt" --strip-components=1
    return
  fi
  local -a off=(pkg_config separate_debug_info dbus sql printsupport xml androiddeployqt windeployqt macdeployqt qmake
    tabletevent opengl vulkan zstd icu glib system_zlib system_pcre2 system_png system_jpeg system_freetype system_harfbuzz
    system_doubleconversion system_libb2 openssl fontconfig direct2d1_1 tuiotouch)
  local -a switched_off=("${off[@]/#/-DFEATURE_}")
  switched_off=("${switched_off[@]/%/=OFF}")
  unpack_source qt
  export CCACHE_SLOPPINESS=pch_defines,time_macros
  # The platform's plug-in is linked with what direct2d brings.
  build_with_cmake "$windows_libraries/sources/qt" qt -DCMAKE_INSTALL_PREFIX="$windows_libraries/qt" -DBUILD_SHARED_LIBS=ON \
    -DCMAKE_C_FLAGS=-w "-DCMAKE_CXX_FLAGS=-fpch-preprocess -w" -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DQT_BUILD_EXAMPLES=OFF \
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF -DINPUT_opengl=no -DFEATURE_precompile_header=ON \
    -DFEATURE_concurrent=ON -DFEATURE_schannel=ON -DFEATURE_direct2d=ON "${switched_off[@]}"
  for name in "$windows_libraries"/qt/bin/*.dll "$windows_libraries"/qt/plugins/*/*.dll; do
    "$windows_target-strip" --strip-unneeded "$name"
  done
  rm -rf "$windows_libraries/made/qt"
}

if [ $# -gt 0 ] && [ "$0" = "${BASH_SOURCE[0]}" ]; then "build_$1"; fi
